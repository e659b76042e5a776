#include "template_host.h"

#include <algorithm>

#include "TokenTemplateResolver/included_file.h"
#include "fuzz_support.h"
#include "support/cerr_capture.h"

namespace ttr {
namespace {

CTemplateHost* currentHost = nullptr;

/// Makes `host` the one that included files come from.
class CCurrentHost {
 public:
  explicit CCurrentHost(CTemplateHost* host) { currentHost = host; }
  ~CCurrentHost() { currentHost = nullptr; }
  CCurrentHost(const CCurrentHost&) = delete;
  CCurrentHost& operator=(const CCurrentHost&) = delete;
};

/// Runs `step`; what it threw, of the classes `Documented` and no other.
template <typename... Documented, typename Step>
std::string faultOf(const Step& step) {
  std::string fault;
  finishes<Documented...>([&] {
    try {
      step();
    } catch (const std::exception& error) {
      fault = std::string(typeid(error).name()) + ": " + error.what();
      throw;
    }
  });
  return fault;
}

void requireKnownFault(const std::string& fault) {
  // The library itself throws this class for one reason only.
  static const std::string own = typeid(std::runtime_error).name();
  require(fault.rfind(own + ":", 0) != 0 ||
              fault == own + ": TokenResolver::evaluateExpression: divide by zero.",
          "a std::runtime_error is a division by zero", fault);
}

void requireMessages(const std::string& messages) {
  if (messages.empty()) return;
  require(messages.front() == 'C' && messages.back() == '\n', "whole messages", messages);
}

}  // namespace

const char* const probePage = R"j({"Page": {"Context": {"c": "x"}, "Contents": [
  {"Include": {"Filename": "probe"}},
  {"Bounds": ["50%", 1, 9, 9], "RenderType": 1024, "Contents": [
    {"RenderType": 1},
    {"Loop": {"List": "a,b,c", "Value": "v", "Bounds": [1, 2, 3, 4], "Contents": [
      "$(context.v) $(context.c)", {"Bounds": [1, 1, "50%", 2]}]}}]},
  {"RenderType": 1024}]}})j";

// --- Handlers ---

const Json::Value& CAnyHandler::answer(const Json::Value& value) const {
  m_work.countQuestion();
  m_work.spend(workOf(value));
  return value;
}

const Json::Value& CAnyHandler::reach(const CTokenParts& parts) const {
  const Json::Value* value = &m_value;
  for (std::size_t i = m_nameParts; i < parts.size() && value->isObject(); ++i) {
    if (!value->isMember(parts[i])) break;
    value = &(*value)[parts[i]];
  }
  return *value;
}

Json::Value CAnyHandler::GetIndexedValue(const CParsedToken& token,
                                         const Json::Value& index) const {
  require(index.type() == Json::intValue, "an index is an int");
  const Json::Value& list = reach(token.nameParts);
  if (!list.isArray() || index.asInt() < 0 || !list.isValidIndex(index.asUInt())) {
    return answer(list);
  }
  return answer(list[index.asUInt()]);
}

Json::Value CAnyHandler::GetValue(const CParsedToken& token) const {
  const Json::Value& value = reach(token.nameParts);
  return answer(value.isObject() && value.isMember(token.argument) ? value[token.argument] : value);
}

Json::Value CAnyHandler::GetPartsValue(const CTokenParts& parts) const {
  return answer(reach(parts));
}

// --- Host ---

CTemplateHost::CTemplateHost(const CTemplateInput& input) : m_input(input), m_work(input.throwAt) {
  m_tokens.Set("context", &m_context);
  for (const std::string& name : input.values.getMemberNames()) {
    const auto parts = 1 + std::count(name.begin(), name.end(), '.');
    m_handlers.push_back(
        std::make_unique<CAnyHandler>(input.values[name], static_cast<std::size_t>(parts), m_work));
    m_tokens.Set(name, m_handlers.back().get());
  }
  m_resolver.SetScreenSize(input.height, input.width);
}

CPass CTemplateHost::Run(const std::string& page) {
  CCerrCapture messages;
  CPass pass;
  // A host whose document is a scalar is not used again: Input would throw.
  pass.fault = faultOf<Json::RuntimeError>([&] { m_resolver.Input(page); });
  requireScreenFrame();
  if (pass.finished()) {
    process(pass);
  } else {
    pass.output = m_resolver.Output();
    require(pass.output == "null" || pass.output == "{}" || pass.output == "[]",
            "no document after Input has thrown", pass.output);
  }
  pass.messages = messages.Take();
  requireMessages(pass.messages);
  return pass;
}

CPass CTemplateHost::Again() {
  CCerrCapture messages;
  CPass pass;
  process(pass);
  pass.messages = messages.Take();
  requireMessages(pass.messages);
  return pass;
}

void CTemplateHost::process(CPass& pass) {
  const CCurrentHost current(this);
  m_work.restart();
  pass.fault =
      faultOf<std::runtime_error, Json::LogicError, Json::RuntimeError, CHandlerFault, CWorkSpent>(
          [&] { m_resolver.Process(); });
  requireKnownFault(pass.fault);
  if (pass.finished()) requireScreenFrame();
  pass.frames = m_stack.frames().size();
  pass.output = m_resolver.Output();
}

/// Between passes the stack holds the screen's frame, if there is a screen, and nothing else.
void CTemplateHost::requireScreenFrame() const {
  const auto& frames = m_stack.frames();
  const bool screen = m_input.height > 0 && m_input.width > 0;
  require(frames.size() == (screen ? 1U : 0U), "the stack is back at the screen's frame");
  if (!screen) return;
  Json::Value bounds(Json::arrayValue);
  for (const int number : {0, 0, m_input.width, m_input.height}) bounds.append(number);
  bounds.resize(6);
  require(frames[0].bounds == bounds, "the screen's bounds");
  require(frames[0].context.isObject(), "a context is an object");
}

std::string CTemplateHost::ReadFile(const std::string& name) {
  if (name == "probe") return R"({"Contents": [{"Include": {"Filename": "probe"}}]})";
  const auto file = m_input.files.find(name);
  // Reading costs even where there is nothing to walk.
  m_work.spend(file == m_input.files.end() ? 10 : 10 + file->second.work);
  return file == m_input.files.end() ? "" : file->second.text;
}

/// Takes the place of the library's own, which reads files.
std::string readIncludedFile(const std::string& name) {
  require(currentHost != nullptr, "files are included by Process only");
  return currentHost->ReadFile(name);
}

}  // namespace ttr
