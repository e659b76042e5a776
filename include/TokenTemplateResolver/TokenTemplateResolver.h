#ifndef TOKENTEMPLATERESOLVER_TOKENTEMPLATERESOLVER_H
#define TOKENTEMPLATERESOLVER_TOKENTEMPLATERESOLVER_H

/// All headers of the library; the ready-made handlers have their own.

#include "TokenTemplateResolver/export.h"
#include "TokenTemplateResolver/included_file.h"
#include "TokenTemplateResolver/json_text.h"
#include "TokenTemplateResolver/parsed_token.h"
#include "TokenTemplateResolver/regex_match.h"
#include "TokenTemplateResolver/template_resolver.h"
#include "TokenTemplateResolver/template_stack.h"
#include "TokenTemplateResolver/time_format.h"
#include "TokenTemplateResolver/token_handler.h"
#include "TokenTemplateResolver/token_parts.h"
#include "TokenTemplateResolver/token_resolver.h"
#include "TokenTemplateResolver/trace.h"

#endif  // TOKENTEMPLATERESOLVER_TOKENTEMPLATERESOLVER_H
