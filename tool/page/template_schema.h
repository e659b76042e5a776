#ifndef TOOL_PAGE_TEMPLATE_SCHEMA_H
#define TOOL_PAGE_TEMPLATE_SCHEMA_H

namespace ttr {

/// The JSON schema of templates, the text of schema/render-template.schema.json.
extern const char templateSchema[];

}  // namespace ttr

#endif  // TOOL_PAGE_TEMPLATE_SCHEMA_H
