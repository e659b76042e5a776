#ifndef TTR_FUZZ_TEMPLATE_CHECKS_H
#define TTR_FUZZ_TEMPLATE_CHECKS_H

#include <json/value.h>

#include "template_input.h"

namespace ttr {

/// True when nothing in `document` asks to be changed, so that it must come back as it is. Decided
/// on its own account, and for less than all documents of which that is true.
bool isPlain(const Json::Value& document);

/// Asserts the numbering of containers in `output`, the result of the first pass over the page of
/// `input`: in the order of the walk the ids are 1, 2, 3, ..., each once, and every "Container"
/// names a container around it. Says nothing where the input itself holds members of these names.
void checkContainers(const CTemplateInput& input, const Json::Value& output);

/// Asserts that the members of each element in `output` have the types that resolving gives them,
/// and that each member of a container is marked. Says nothing where it cannot tell elements from
/// objects that were not resolved: those that tokens put there, and those in included files.
void checkElements(const CTemplateInput& input, const Json::Value& output);

}  // namespace ttr

#endif  // TTR_FUZZ_TEMPLATE_CHECKS_H
