// A template against its schema. The walk through both follows the keywords that lead on to other
// values or parts of the schema; whether a value keeps to a part is for valijson to say, one part
// at a time: so each wrong value is found where it is, and with the text that stands in the schema
// for it as "errorMessage", a keyword of editors.
#include "page/schema_check.h"

#include <algorithm>
#include <map>
#include <valijson/adapters/jsoncpp_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>

#include "TokenTemplateResolver/json_text.h"
#include "page/template_schema.h"

namespace ttr {
namespace {

using valijson::adapters::JsonCppAdapter;

/// The keywords that the walk follows. They stand in parts of the schema that have no others but
/// these and what valijson can judge without them.
constexpr const char* followed[] = {"definitions", "properties", "items", "allOf",
                                    "if",          "then",       "else",  "$id"};

/// The schema of templates, with each part of it that can hold or not, made ready for valijson.
class CTemplateSchema {
 public:
  CTemplateSchema() {
    std::string errors;
    m_document = jsoncpp_string::toJsonObject(templateSchema, &errors);
    Prepare(m_document);
  }

  const Json::Value& document() const { return m_document; }
  const Json::Value& Referenced(const Json::Value& part) const {
    const auto found = m_referenced.find(&part);
    return found == m_referenced.end() ? part : *found->second;
  }
  const valijson::Schema& Ready(const Json::Value& part) const { return m_ready.at(&part); }

 private:
  void Prepare(const Json::Value& part) {
    if (part.isObject() && part.isMember("errorMessage")) {
      Json::Value own = part;
      for (const char* keyword : followed) own.removeMember(keyword);
      Parse(part, own);
    }
    if (part.isObject() && part.isMember("if")) Parse(part["if"], part["if"]);
    if (part.isObject() && part.isMember("$ref")) m_referenced[&part] = Target(part);
    if (!part.isObject() && !part.isArray()) return;
    for (const Json::Value& inner : part) Prepare(inner);
  }

  const Json::Value* Target(const Json::Value& part) const {
    const CJsonPointer pointer = CJsonPointer::Parse(part["$ref"].asString().substr(1));
    const Json::Value* target = pointer.Find(m_document);
    return target->isMember("$ref") ? Target(*target) : target;
  }

  void Parse(const Json::Value& part, const Json::Value& text) {
    valijson::SchemaParser(valijson::SchemaParser::kDraft7)
        .populateSchema(JsonCppAdapter(text), m_ready[&part]);
  }

  Json::Value m_document;
  std::map<const Json::Value*, valijson::Schema> m_ready;
  std::map<const Json::Value*, const Json::Value*> m_referenced;  ///< of the parts with "$ref"
};

/// One walk through a document.
class CSchemaWalk {
 public:
  explicit CSchemaWalk(const CTemplateSchema& schema) : m_schema(schema) {}

  void Check(const Json::Value& value, const CJsonPointer& pointer, const Json::Value& reference) {
    const Json::Value& part = m_schema.Referenced(reference);
    if (part.isMember("errorMessage") && !Holds(part, value)) {
      faults.push_back({pointer, part["errorMessage"].asString()});
    }
    for (const Json::Value& also : part["allOf"]) Check(value, pointer, also);
    if (part.isMember("if")) {
      const char* branch = Holds(part["if"], value) ? "then" : "else";
      if (part.isMember(branch)) Check(value, pointer, part[branch]);
    }
    if (value.isObject()) CheckMembers(value, pointer, part["properties"]);
    if (value.isArray()) CheckEntries(value, pointer, part["items"]);
  }

  std::vector<CSchemaFault> faults;

 private:
  bool Holds(const Json::Value& part, const Json::Value& value) {
    return m_validator.validate(m_schema.Ready(part), JsonCppAdapter(value), nullptr);
  }

  void CheckMembers(const Json::Value& value, const CJsonPointer& pointer,
                    const Json::Value& properties) {
    for (const std::string& name : properties.getMemberNames()) {
      if (value.isMember(name)) Check(value[name], pointer / name, properties[name]);
    }
  }

  /// `items` is one part for all entries, or an array with a part for each of the first ones.
  void CheckEntries(const Json::Value& value, const CJsonPointer& pointer,
                    const Json::Value& items) {
    const Json::ArrayIndex end =
        items.isArray() ? std::min(items.size(), value.size()) : value.size();
    for (Json::ArrayIndex index = 0; index < end && !items.isNull(); ++index) {
      Check(value[index], pointer / std::size_t{index}, items.isArray() ? items[index] : items);
    }
  }

  const CTemplateSchema& m_schema;
  valijson::Validator m_validator;
};

}  // namespace

std::vector<CSchemaFault> schemaFaults(const Json::Value& document) {
  static const CTemplateSchema schema;
  CSchemaWalk walk(schema);
  walk.Check(document, CJsonPointer(), schema.document());
  return walk.faults;
}

}  // namespace ttr
