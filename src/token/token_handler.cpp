#include "TokenTemplateResolver/token_handler.h"

ITokenHandler::~ITokenHandler() = default;

Json::Value ITokenHandler::GetIndexedValue(const CParsedToken& /*token*/,
                                           const Json::Value& /*index*/) const {
  return Json::Value();
}

Json::Value ITokenHandler::GetValue(const CParsedToken& token) const {
  return GetPartsValue(token.nameParts);
}
