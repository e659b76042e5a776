// `ttr schema`: the JSON schema of templates, for editors.
#include <memory>
#include <string>

#include "commands.h"
#include "files.h"
#include "page/template_schema.h"

namespace ttr {
namespace {

constexpr char examples[] = R"(Examples:
  ttr schema
  ttr schema -o render-template.schema.json

The schema is draft-07. Editors that know JSON schemas offer the members of templates with it,
tell what they mean, and mark wrong values; docs/editor-setup.md shows how. ttr check uses it too.

Exit code: 0, or 2 when the command could not be carried out.)";

int runSchema(const std::string& output) {
  if (output.empty()) {
    writeStandardOutput(templateSchema);
  } else {
    writeFile(output, templateSchema);
  }
  return 0;
}

}  // namespace

CCommand schemaCommand() {
  const auto output = std::make_shared<std::string>();
  return {"schema",
          "Print the JSON schema of templates",
          examples,
          [output] { return runSchema(*output); },
          {{"-o,--output", output.get(), "Write the schema to this file", "FILE"}}};
}

}  // namespace ttr
