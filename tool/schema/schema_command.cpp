// `ttr schema`: the JSON schema of templates, for editors.
#include "schema/schema_command.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "files.h"
#include "schema/template_schema.h"

namespace ttr {
namespace {

constexpr char examples[] = R"(Examples:
  ttr schema
  ttr schema -o render-template.schema.json

The schema is draft-07. Editors that know JSON schemas offer the members of templates with it,
tell what they mean, and mark wrong values; docs/editor-setup.md shows how. ttr check uses it too.

Exit code: 0, or 2 when the command could not be carried out.)";

void runSchema(const std::string& output) {
  if (output.empty()) {
    writeStandardOutput(templateSchema);
  } else {
    writeFile(output, templateSchema);
  }
}

}  // namespace

void addSchemaCommand(CLI::App& app, int* exitCode) {
  auto output = std::make_shared<std::string>();
  CLI::App* command = app.add_subcommand("schema", "Print the JSON schema of templates");
  command->add_option("-o,--output", *output, "Write the schema to this file")->type_name("FILE");
  command->footer(examples);
  command->callback([output, exitCode] {
    runSchema(*output);
    *exitCode = 0;
  });
}

}  // namespace ttr
