#ifndef TESTS_SUPPORT_THROWING_HANDLER_H
#define TESTS_SUPPORT_THROWING_HANDLER_H

#include <json/value.h>

#include <exception>

#include "TokenTemplateResolver/token_handler.h"

/// An exception of the host, which the library knows nothing of.
class CHostError : public std::exception {};

/// Throws when it is asked for a value.
class CThrowingHandler : public ITokenHandler {
 public:
  Json::Value GetPartsValue(const CTokenParts& /*parts*/) const override { throw CHostError(); }
};

#endif  // TESTS_SUPPORT_THROWING_HANDLER_H
