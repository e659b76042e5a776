#include "exceptions/page_host.h"

#include <TokenTemplateResolver/json_text.h>

#include "exceptions/memory_files.h"
#include "exceptions/thrown.h"
#include "support/json.h"
#include "support/page_generator.h"

std::vector<CPage> HandMadePages() {
  const std::map<std::string, Json::Value> values = {
      {"n", 3},
      {"text", "Walk"},
      {"area", Parse(R"({"left": 20, "ratio": 0.75, "names": ["x", null, true]})")},
      {"flights", Parse(R"([{"to": "Oslo", "gate": "B7"}, {"to": "A name of many letters"}])")}};
  const char* const documents[] = {
      R"j({"Page": {"Context": {"ink": "#FFCC00FF", "title": "Gate $(text) at $(n+1)"}, "Contents": [
        {"Bounds": [5, "10%", "50%", "$(area.left)", "7", "$(n)"], "Layout": [["50%", 3], ["$(n)"]],
         "Display": ["$(context.ink)", "#0F0F0F80", 255, "no colour"], "Play": [], "Prec": ["$(n*2)"],
         "RenderType": 1024, "Note": "$(kept)", "Contents": [
           {"RenderType": "$(n)", "Play": {"a": "$(area)"}, "Contents": ["Icons/$(text).PNG", 5, []]},
           {"RenderType": 1024, "Contents": ["$(context.title) and so on and on", "\u00e9.JPG"]}]},
        {"Prec": 5, "Display": {"a": 1}, "Contents": "text", "Context": [1]}, "$(area)",
        "$(flights)", "$(flights#+1) $(flights[1].to) $(flights[n.x]) $(area.names[]) $(area.names)",
        "$(area.ratio), $(gone), $(n:argument), $(unterminated"]}})j",
      R"j({"Contents": [
        {"If": {"Condition": "$(n)", "Contents": ["yes", {"Contents": ["$(text)"]}]}},
        {"If": {"Condition": "$(n)", "Equals": [1, "$(n)", 3], "Contents": ["member"]}},
        {"If": {"Condition": "$(text)", "NotEquals": "$(text)", "Contents": ["no"]}},
        {"If": {"Condition": "$(n)", "==": "3", "Contents": ["equal"]}},
        {"If": {"Condition": "$(n)", "!=": "two", "Contents": ["invalid"]}},
        {"If": {"Condition": "$(area.left)", "<": 100, "Contents": ["less"]}},
        {"If": {"Condition": "$(area.left)", ">": 100, "Contents": ["more"]}}, {"If": null},
        {"Context": {"dir": "parts"}, "Bounds": [10, 10, "50%", "50%"],
         "Include": {"Filename": "$(context.dir)/head.json"}},
        {"Include": {"Filename": "no such file.json"}}, {"Include": {}},
        {"Include": {"Filename": "parts/self.json"}}]})j",
      R"j({"Contents": [{"RenderType": 1024, "Bounds": [10, 10, 200, 100], "Contents": [
        {"Loop": {"List": "$(flights)", "Value": "flight", "Var": "index", "Count": "row",
          "CellWidth": "$(area.left)", "CellHeight": 10, "Layout": [[["10%", 0]], [[0, 0], [0, 20, 5, 6]]],
          "Contents": [{"Bounds": [1, 1, "50%", "100%"], "RenderType": 2, "Contents": [
            "$(context.flight.to) $(context.row) $(context.flight)"]}, "$(context.index)"]}},
        {"Loop": {"List": "one,\"two, three\",a rather long entry of the list", "Value": "entry",
          "Key": "key", "Start": "$(n-1)", "Size": -2, "Bounds": [1, 2, 30, 40],
          "Contents": [{"Contents": ["$(context.entry)"], "RenderType": 1}]}},
        {"Loop": {"List": [1, 2, 3], "Stop": 7, "Layout": []}},
        {"Loop": {"Start": 1, "Size": 3, "Layout": [[[0, 0]]], "Contents": ["x"]}}]}]})j",
      R"j({"Contents": ["$(n/0)"]})j",
      R"j({"Contents": [{"Contents": [{"Bounds": {"a": "$(n)"}}]}]})j",
      "[1, 2",
  };
  const std::map<std::string, std::string> files = {
      {"parts/head.json", R"j({"Page": {"Context": {"a": "$(text)"}, "Contents": [
        {"Bounds": [0, 0, "50%", 10], "RenderType": 1024, "Contents": ["$(context.a)"]}]}})j"},
      {"parts/self.json", R"j({"Contents": [{"Include": {"Filename": "parts/self.json"}}]})j"}};
  std::vector<CPage> pages;
  for (const char* document : documents) pages.push_back({document, values, files});
  return pages;
}

CPage CommentedPage() {
  return {R"j({// a comment
    "Contents": [ /* before */ "$(text)", {"Bounds": [1, 2, 3, 4] // after
    , "Loop": {"List": ["a" /* kept */, "b"], "Value": "v", "Layout": [/* c */ [[0, 0], [1, 1]]],
      "Contents": ["$(context.v)", {"Play": [7, "$(area)"]}]}}]})j",
          {{"text", "Walk"}, {"area", Parse(R"({"left": 20 /* handed out */})")}},
          {}};
}

CPage RandomPage(std::uint32_t seed) {
  ttr::CPageGenerator generator(seed);
  CPage page;
  page.text = jsoncpp_string::toString(generator.Document());
  for (const char* name : {"a.json", "b.json"}) {
    page.files[name] = jsoncpp_string::toString(generator.Document());
  }
  page.values["n"] = static_cast<int>(seed % 5);
  page.values["area"]["left"] = 20;
  for (const char* name : {"text", "flights"}) page.values[name] = generator.HandlerValue();
  return page;
}

/// Burns the fuse, then asks another handler.
class CPageHost::CFusedHandler : public ITokenHandler {
 public:
  CFusedHandler(CFuse* burning, const ITokenHandler* inner) : m_fuse(burning), m_inner(inner) {}

  Json::Value GetIndexedValue(const CParsedToken& token, const Json::Value& index) const override {
    m_fuse->Burn();
    return m_inner->GetIndexedValue(token, index);
  }
  Json::Value GetValue(const CParsedToken& token) const override {
    m_fuse->Burn();
    return m_inner->GetValue(token);
  }
  Json::Value GetPartsValue(const CTokenParts& parts) const override {
    m_fuse->Burn();
    return m_inner->GetPartsValue(parts);
  }

 private:
  CFuse* m_fuse;
  const ITokenHandler* m_inner;
};

CPageHost::CPageHost(const CPage& page) : m_page(page) {
  for (const auto& [name, value] : page.values) {
    m_tokens.Set(name, &m_handlers.emplace_back(&fuse, &m_values.emplace_back(value)));
  }
  m_tokens.Set("context", &m_handlers.emplace_back(&fuse, &m_context));
  m_resolver.SetScreenSize(720, 1280);
  serveFiles();
}

CPageHost::~CPageHost() { MemoryFiles() = {}; }

std::string CPageHost::Run() {
  m_resolver.Input(m_page.text);
  ++m_passes;
  m_resolver.Process();
  return m_resolver.Output();
}

std::string CPageHost::Outcome(const std::string& output, const std::string& thrown) {
  std::string outcome = thrown == "nothing" ? output : m_resolver.Output();
  return outcome + "\nthrown: " + thrown + "\n" + Frames() + m_errors.Take();
}

std::string CPageHost::Frames() const {
  std::string frames;
  for (const CTemplateStack::CStackFrame& frame : m_stack.frames()) {
    frames += "frame " + jsoncpp_string::toString(frame.context) + " " +
              jsoncpp_string::toString(frame.bounds) + "\n";
  }
  return frames;
}

std::string CPageHost::Pass() {
  serveFiles();
  std::string output;
  const std::string thrown = Thrown([&] { output = Run(); });
  return Outcome(output, thrown);
}

void CPageHost::serveFiles() {
  MemoryFiles() = {m_page.files, [this] { fuse.Burn(); }};
}

void CPageHost::PassUntil(unsigned passes) {
  while (m_passes < passes) {
    m_resolver.Input("{}");
    ++m_passes;
    m_resolver.Process();
  }
  m_errors.Take();
}
