#include <gtest/gtest.h>
#include <json/value.h>
#include <stdlib.h>

#include <cstddef>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "TokenTemplateResolver/template_resolver.h"
#include "support/frames_handler.h"
#include "support/resolver_fixture.h"
#include "support/throwing_handler.h"

namespace {

using CCalls = std::vector<std::string>;

/// Answers `$(stack.context)`, `$(stack.bounds)` and `$(stack.size)`: the top frame's context, the
/// bounds in force and the number of frames; for any other name, the innermost context's value.
class CStackHandler : public ITokenHandler {
 public:
  explicit CStackHandler(const CTemplateStack* stack) : m_stack(stack) {}

  Json::Value GetPartsValue(const CTokenParts& parts) const override {
    const std::vector<CTemplateStack::CStackFrame>& frames = m_stack->frames();
    if (parts[1] == "context") return frames.back().context;
    if (parts[1] == "bounds") return m_stack->boundsFind();
    if (parts[1] == "size") return Json::Value(static_cast<int>(frames.size()));
    for (auto frame = frames.rbegin(); frame != frames.rend(); ++frame) {
      if (frame->context.isMember(parts[1])) return frame->context[parts[1]];
    }
    return Json::Value();
  }

 private:
  const CTemplateStack* m_stack;
};

/// Runs in a fresh directory, which holds the files to include.
class IncludeElement : public ResolverTest {
 protected:
  IncludeElement() : m_previous(std::filesystem::current_path()) {
    std::string name = (std::filesystem::temp_directory_path() / "include_XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no directory " + name);
    m_directory = std::filesystem::canonical(name);
    std::filesystem::current_path(m_directory);
  }

  ~IncludeElement() override {
    std::filesystem::current_path(m_previous);
    std::filesystem::remove_all(m_directory);
  }

  const std::filesystem::path& directory() const { return m_directory; }

  static void File(const std::string& name, const std::string& text) {
    std::ofstream(name, std::ios::binary) << text;
  }

  /// What replaces the element with the Include member `include`, outside any walk.
  Json::Value Included(const std::string& include) {
    Json::Value value = Parse(include);
    return resolver.processContentsIncludeElement(value);
  }

  /// The resolved form of `entry`, standing alone in a top-level "Contents".
  std::string ResolveEntry(const std::string& entry) {
    const std::string page = Resolve(R"({"Contents":[)" + entry + "]}");
    return page.substr(13, page.size() - 15);
  }

 private:
  std::filesystem::path m_previous;
  std::filesystem::path m_directory;
};

constexpr char readNothing[] =
    "CTemplateResolver::read:* Line 1, Column 1\n"
    "  Syntax error: value, object or array expected.\n.\n"
    "CTemplateResolver::Process: render template must have Page or Contents member.\n";

constexpr char filenameMessage[] =
    "CTemplateResolver::processContentsIncludeElement: 'Filename' element must be present and must "
    "be string type.\n";

constexpr char depthMessage[] =
    "CTemplateResolver::processContentsIncludeElement: include depth of 11 exceeds maximum of 10\n";

// --- The included document ---

TEST_F(IncludeElement, ElementBecomesTheResolvedDocument) {
  Handle("n", "7");
  const struct {
    const char* file;
    const char* element;
  } cases[] = {
      {R"({"Contents": ["X.PNG"]})", R"({"Contents":["x.png"]})"},
      {R"j({"Contents": ["$(n)", {"Prec": ["$(n)"]}], "Name": "$(n)"})j",
       R"j({"Contents":[7,{"Prec":[7]}],"Name":"$(n)"})j"},
      {R"j({"Page": {"Contents": ["$(n)"]}, "Contents": ["$(n)"]})j",
       R"j({"Contents":["$(n)"],"Page":{"Contents":[7]}})j"},
      {R"({"Contents": []})", R"({"Contents":[]})"},
      {"\n{\r\n\t\"Contents\": [\n\"x\"\n]\n}\n", R"({"Contents":["x"]})"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.file);
    File("a", c.file);
    EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"a"}})"), c.element);
    EXPECT_EQ(Included(R"({"Filename":"a"})"), Parse(c.element));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(IncludeElement, FileIsReadWhole) {
  const std::string text = R"({"Contents":[],"Name":")" + std::string(300000, 'x') + R"("})";
  File("a", text);
  EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"a"}})"), text);
  EXPECT_EQ(Errors(), "");
}

TEST_F(IncludeElement, FileIsReadAnewForEachInclude) {
  File("a", R"({"Contents":["before"]})");
  EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"a"}})"), R"({"Contents":["before"]})");
  File("a", R"({"Contents":["after"]})");
  EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"a"}})"), R"({"Contents":["after"]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(IncludeElement, DocumentWithoutPageAndContentsIsReportedAndKept) {
  for (const std::string text : {"{}", R"({"Name":"A.PNG"})", R"({"Include":{"Filename":"a"}})"}) {
    SCOPED_TRACE(text);
    File("a", text);
    EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"a"}})"), text);
    EXPECT_EQ(Errors(),
              "CTemplateResolver::Process: render template must have Page or Contents member.\n");
  }
}

TEST_F(IncludeElement, FaultsOfTheDocumentAreReportedAsItsOwn) {
  File("a", R"({"Page":{"Name":"x"}})");
  File("b", R"({"Contents":{"Name":"x"}})");
  EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"a"}})"), R"({"Page":{"Name":"x"}})");
  EXPECT_EQ(Errors(), "CTemplateResolver::processPageValue: Page must have Contents member.\n");
  EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"b"}})"), R"({"Contents":{"Name":"x"}})");
  EXPECT_EQ(Errors(),
            "CTemplateResolver::processContentsArray: Contents member must be an array.\n");
}

TEST_F(IncludeElement, DocumentIsNotLeftToTheNextPass) {
  Handle("n", "7");
  File("a", R"j({"Page":{"Contents":["$(n)"]}})j");
  EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"a"}})"), R"({"Page":{"Contents":[7]}})");
  std::filesystem::remove("a");
  resolver.Process();
  EXPECT_EQ(resolver.Output(), R"({"Contents":[{"Page":{"Contents":[7]}}]})");
  EXPECT_EQ(Errors(), "");
}

// --- The file's name ---

TEST_F(IncludeElement, NameIsUsedAsItStands) {
  std::filesystem::create_directory("Pages");
  for (const std::string name :
       {"A.PNG", " a b.json ", "Pages/../Pages/b", "./c", "10%", "$(", "~"}) {
    SCOPED_TRACE(name);
    File(name, R"({"Contents":["x"]})");
    EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":")" + name + R"("}})"),
              R"({"Contents":["x"]})");
    EXPECT_EQ(Errors(), name == "$("
                            ? "CTokenResolver::SubstituteTokenValues: missing end-of-token "
                              "delimiter.\n"
                            : "");
  }
}

TEST_F(IncludeElement, RelativeNameStartsAtTheWorkingDirectoryAlsoFromAFile) {
  std::filesystem::create_directory("sub");
  File("sub/a", R"({"Contents":[{"Include":{"Filename":"b"}}]})");
  File("b", R"({"Contents":["right"]})");
  File("sub/b", R"({"Contents":["wrong"]})");
  EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"sub/a"}})"),
            R"({"Contents":[{"Contents":["right"]}]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(IncludeElement, NameIsSubstituted) {
  const CTableHandler& handler = Handle("dir", Json::Value(directory().string()).toStyledString());
  Handle("file", R"("a")");
  File("a", R"({"Contents":["x"]})");
  for (const char* include : {R"j({"Filename":"$(dir)/a"})j", R"j({"Filename":"$(file)"})j",
                              R"j({"Filename":"$(dir)/$(file)"})j"}) {
    SCOPED_TRACE(include);
    Json::Value value = Parse(include);
    EXPECT_EQ(resolver.processContentsIncludeElement(value), Parse(R"({"Contents":["x"]})"));
    EXPECT_EQ(value, Parse(include));
    EXPECT_EQ(Errors(), "");
  }
  EXPECT_EQ(handler.calls(), (CCalls{"GetValue dir", "GetValue dir"}));
}

TEST_F(IncludeElement, NameThatIsNoStringBecomesNull) {
  Handle("n", "5");
  for (const char* include :
       {"{}", "null", R"({"filename":"a"})", R"({"Filename":null})", R"({"Filename":5})",
        R"({"Filename":2.5})", R"({"Filename":true})", R"({"Filename":["a"]})",
        R"({"Filename":{"a":"a"}})", R"j({"Filename":"$(n)"})j"}) {
    SCOPED_TRACE(include);
    EXPECT_EQ(ResolveEntry(R"({"Contents":["x"],"Include":)" + std::string(include) + "}"), "null");
    EXPECT_EQ(Errors(), filenameMessage);
  }
  EXPECT_EQ(ResolveEntry(R"j({"Include":{"Filename":"$(gone)"}})j"), "null");
  EXPECT_EQ(Errors(), std::string("CTokenResolver::GetTokenValue: no token handler for: gone.\n") +
                          filenameMessage);
}

TEST_F(IncludeElement, IncludeThatIsArrayOrScalarThrows) {
  for (const char* include : {"[]", R"(["Filename"])", "5", "2.5", "true", R"("a")"}) {
    SCOPED_TRACE(include);
    EXPECT_THROW(Included(include), Json::LogicError);
    EXPECT_EQ(Errors(), "");
  }
}

// --- Files that cannot be used ---

TEST_F(IncludeElement, FileThatCannotBeReadCountsAsEmpty) {
  File("file", R"({"Contents":["x"]})");
  File("empty", "");
  std::filesystem::create_directory("directory");
  std::filesystem::create_symlink("nowhere", "dangling");
  std::filesystem::create_symlink("loop", "loop");
  const std::string names[] = {"missing", "", "empty", ".", "directory", "directory/",
                               "directory/missing", "file/below", "dangling", "loop",
                               std::string(5000, 'x'),
                               // Opens, but its first byte cannot be read.
                               "/proc/self/mem"};
  for (const std::string& name : names) {
    SCOPED_TRACE(name);
    EXPECT_EQ(ResolveEntry(R"({"Contents":["x"],"Include":{"Filename":")" + name + R"("}})"),
              "null");
    EXPECT_EQ(Errors(), readNothing);
  }
}

TEST_F(IncludeElement, TextThatDoesNotParseBecomesNull) {
  File("a", R"({"Contents":["x"])");
  EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"a"}})"), "null");
  EXPECT_EQ(Errors(),
            "CTemplateResolver::read:* Line 1, Column 18\n"
            "  Missing ',' or '}' in object declaration\n.\n"
            "CTemplateResolver::Process: render template must have Page or Contents member.\n");
}

TEST_F(IncludeElement, NullDocumentIsReportedTwice) {
  File("a", "null");
  EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"a"}})"), "null");
  EXPECT_EQ(Errors(),
            "CTemplateResolver::read:.\n"
            "CTemplateResolver::Process: render template must have Page or Contents member.\n");
}

TEST_F(IncludeElement, DocumentThatIsArrayOrScalarThrows) {
  for (const char* text : {"[]", R"([{"Contents":[]}])", "5", "2.5", "false", R"("Contents")"}) {
    SCOPED_TRACE(text);
    File("a", text);
    resolver.Input(R"({"Contents":["A.PNG",{"Include":{"Filename":"a"}}]})");
    EXPECT_THROW(resolver.Process(), Json::LogicError);
    EXPECT_EQ(resolver.Output(), R"({"Contents":["a.png",{"Include":{"Filename":"a"}}]})");
    EXPECT_EQ(stack.frames().size(), 2U);
    EXPECT_EQ(Errors(), "CTemplateResolver::read:.\n");
  }
}

// --- Depth ---

/// `inner` inside as many included documents as `levels`.
std::string Nested(int levels, const std::string& inner) {
  return levels == 0 ? inner : R"({"Contents":[)" + Nested(levels - 1, inner) + "]}";
}

TEST_F(IncludeElement, ElevenFilesNest) {
  for (int i = 1; i <= 10; ++i) {
    File(std::to_string(i),
         R"({"Contents":[{"Include":{"Filename":")" + std::to_string(i + 1) + R"("}}]})");
  }
  File("11", R"({"Contents":["LAST.PNG"]})");
  EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"1"}})"), Nested(11, R"("last.png")"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(IncludeElement, FileThatIncludesItselfIsReadElevenTimes) {
  const CTableHandler& handler = Handle("file", R"("a")");
  File("a", R"j({"Contents":[{"Include":{"Filename":"$(file)"}}]})j");
  EXPECT_EQ(ResolveEntry(R"j({"Include":{"Filename":"$(file)"}})j"), Nested(11, "null"));
  // The twelfth is refused before its name is looked at.
  EXPECT_EQ(handler.calls().size(), 11U);
  EXPECT_EQ(Errors(), depthMessage);
}

TEST_F(IncludeElement, DepthIsReportedBeforeTheName) {
  File("last", R"({"Contents":[{"Include":{"Filename":5}}]})");
  for (int i = 1; i <= 10; ++i) {
    File(std::to_string(i), R"({"Contents":[{"Include":{"Filename":")" +
                                (i == 10 ? "last" : std::to_string(i + 1)) + R"("}}]})");
  }
  EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"1"}})"), Nested(11, "null"));
  EXPECT_EQ(Errors(), depthMessage);
  EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"2"}})"), Nested(10, "null"));
  EXPECT_EQ(Errors(), filenameMessage);
}

TEST_F(IncludeElement, OnlyNestingCounts) {
  File("a", R"({"Contents":["x"]})");
  File("twice", R"({"Contents":[{"Include":{"Filename":"a"}},{"Include":{"Filename":"a"}}]})");
  std::string entries = R"({"Include":{"Filename":"twice"}})";
  std::string resolved = R"({"Contents":[{"Contents":["x"]},{"Contents":["x"]}]})";
  for (int i = 1; i < 20; ++i) {
    entries += R"(,{"Include":{"Filename":"twice"}})";
    resolved += R"(,{"Contents":[{"Contents":["x"]},{"Contents":["x"]}]})";
  }
  EXPECT_EQ(ResolveEntry(entries), resolved);
  EXPECT_EQ(Errors(), "");
}

TEST_F(IncludeElement, OtherLevelsDoNotCount) {
  File("a", R"({"Contents":["x"]})");
  std::string entry = R"({"Include":{"Filename":"a"}})";
  std::string resolved = R"({"Contents":["x"]})";
  for (int i = 0; i < 20; ++i) {
    entry = R"({"If":{"Condition":1,"Contents":[{"Contents":[)" + entry + "]}]}}";
    resolved = R"({"Contents":[{"Contents":[)" + resolved + "]}]}";
  }
  EXPECT_EQ(ResolveEntry(entry), resolved);
  EXPECT_EQ(Errors(), "");
}

TEST_F(IncludeElement, DepthIsTakenBackAfterEveryFile) {
  File("a", R"({"Contents":["x"]})");
  File("self", R"({"Contents":[{"Include":{"Filename":"self"}}]})");
  for (int i = 0; i < 12; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(Included(R"({"Filename":"missing"})"), Json::Value());
    EXPECT_EQ(Errors(), readNothing);
    EXPECT_EQ(Included(R"({"Filename":5})"), Json::Value());
    EXPECT_EQ(Errors(), filenameMessage);
    EXPECT_EQ(Included(R"({"Filename":"self"})"), Parse(Nested(11, "null")));
    EXPECT_EQ(Errors(), depthMessage);
    EXPECT_EQ(Included(R"({"Filename":"a"})"), Parse(R"({"Contents":["x"]})"));
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(IncludeElement, ExceptionKeepsTheDepthUntilTheNextProcess) {
  File("bad", "[1]");
  File("a", R"({"Contents":["x"]})");
  for (int i = 0; i < 11; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(Included(R"({"Filename":"a"})"), Parse(R"({"Contents":["x"]})"));
    EXPECT_EQ(Errors(), "");
    EXPECT_THROW(Included(R"({"Filename":"bad"})"), Json::LogicError);
    EXPECT_EQ(Errors(), "CTemplateResolver::read:.\n");
  }
  EXPECT_EQ(Included(R"({"Filename":"a"})"), Json::Value());
  EXPECT_EQ(Errors(), depthMessage);
  EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"a"}})"), R"({"Contents":["x"]})");
  EXPECT_EQ(Included(R"({"Filename":"a"})"), Parse(R"({"Contents":["x"]})"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(IncludeElement, NeitherInputNorAnEndedProcessTakesTheDepthBack) {
  const CThrowingHandler handler;
  tokens.Set("host", &handler);
  File("self", R"({"Contents":[{"Include":{"Filename":"self"}}]})");
  File("bad", R"j({"Contents":["$(host)"]})j");
  EXPECT_THROW(Resolve(R"({"Contents":[{"Include":{"Filename":"bad"}}]})"), CHostError);
  EXPECT_EQ(Included(R"({"Filename":"self"})"), Parse(Nested(10, "null")));
  EXPECT_EQ(Errors(), depthMessage);
  resolver.Input("{}");
  EXPECT_EQ(Included(R"({"Filename":"self"})"), Parse(Nested(10, "null")));
  EXPECT_EQ(Errors(), depthMessage);
  EXPECT_EQ(Resolve(R"({"Contents":[]})"), R"({"Contents":[]})");
  EXPECT_EQ(Included(R"({"Filename":"self"})"), Parse(Nested(11, "null")));
  EXPECT_EQ(Errors(), depthMessage);
}

TEST_F(IncludeElement, ExceptionBeforeTheFileDoesNotCount) {
  const CThrowingHandler handler;
  tokens.Set("host", &handler);
  File("a", R"({"Contents":["x"]})");
  File("deep", std::string(2000, '['));
  for (int i = 0; i < 12; ++i) {
    EXPECT_THROW(Included("5"), Json::LogicError);
    EXPECT_THROW(Included(R"j({"Filename":"$(host)"})j"), CHostError);
    EXPECT_THROW(Included(R"({"Filename":"deep"})"), Json::RuntimeError);
  }
  EXPECT_EQ(Included(R"({"Filename":"a"})"), Parse(R"({"Contents":["x"]})"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(IncludeElement, ExceptionLeavesTheFramesUntilTheNextInput) {
  Handle("n", "7");
  File("a", R"j({"Contents":["A.PNG",{"Bounds":[1,2],"Contents":["$(n/0)"]}]})j");
  resolver.Input(R"({"Contents":[{"Context":{"a":1},"Include":{"Filename":"a"}}]})");
  const struct {
    std::size_t frames;
    const char* bounds;
  } passes[] = {{3, "[1, 2]"}, {5, "[2, 4]"}};
  for (const auto& pass : passes) {
    SCOPED_TRACE(pass.frames);
    try {
      resolver.Process();
      FAIL() << "nothing thrown";
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(), "TokenResolver::evaluateExpression: divide by zero.");
    }
    EXPECT_EQ(resolver.Output(),
              R"({"Contents":[{"Context":{"a":1},"Include":{"Filename":"a"}}]})");
    EXPECT_EQ(stack.frames().size(), pass.frames);
    EXPECT_EQ(stack.boundsFind(), Parse(pass.bounds));
  }
  File("a", R"({"Contents":["x"]})");
  EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"a"}})"), R"({"Contents":["x"]})");
  EXPECT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(stack.boundsFind(), Parse("[0, 0, 1280, 720, null, null]"));
  EXPECT_EQ(Errors(), "");
}

// --- What is in force in the included file ---

TEST_F(IncludeElement, BoundsOfTheElementAreInForce) {
  File("a", R"({"Contents":[{"Bounds":[10,"50%","50%","5"]}]})");
  EXPECT_EQ(Resolve(R"({"Contents":[{"Bounds":[100,"50","200",100],"Include":{"Filename":"a"}},)"
                    R"({"Include":{"Filename":"a"}}]})"),
            R"({"Contents":[{"Contents":[{"Bounds":[110,100,100,5]}]},)"
            R"({"Contents":[{"Bounds":[10,360,640,5]}]}]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(IncludeElement, ContextOfTheElementIsInForce) {
  const CStackHandler handler(&stack);
  tokens.Set("stack", &handler);
  File("a", R"j({"Contents":["$(stack.context)","$(stack.size)"]})j");
  EXPECT_EQ(Resolve(R"j({"Contents":[{"Context":{"file":"a"},)j"
                    R"j("Include":{"Filename":"$(stack.file)"}},"$(stack.context)"]})j"),
            R"({"Contents":[{"Contents":[{"file":"a"},2]},{}]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(IncludeElement, ContextOfTheIncludedPageReplacesThatOfTheElement) {
  const CStackHandler handler(&stack);
  tokens.Set("stack", &handler);
  File("a", R"j({"Page":{"Context":{"c":"$(stack.a)"},"Contents":["$(stack.context)"]}})j");
  EXPECT_EQ(Resolve(R"j({"Page":{"Context":{"p":3},"Contents":[{"Context":{"a":1,"b":2},)j"
                    R"j("Include":{"Filename":"a"}},"$(stack.context)"]}})j"),
            R"({"Page":{"Contents":[{"Page":{"Contents":[{"c":1}],"Context":{"c":1}}},{"p":3}],)"
            R"("Context":{"p":3}}})");
  ASSERT_EQ(stack.frames().size(), 1U);
  EXPECT_EQ(stack.frames()[0].context, Parse(R"({"p": 3})"));
  EXPECT_EQ(Errors(), "");
}

TEST_F(IncludeElement, DocumentIsWalkedInTheFrameOfTheElement) {
  CFramesHandler frames(&stack);
  tokens.Set("frames", &frames);
  File("a1", R"j({"Contents":["$(frames.entry)"]})j");
  File("b1", R"j({"Page":{"Contents":["$(frames.entry)"]}})j");
  File("c1", R"j({"Page":{"Context":{"c":"$(frames.context)"},"Contents":["$(frames.entry)"]}})j");
  const struct {
    const char* name;
    std::vector<std::string> seen;
  } cases[] = {
      {"a", {R"(file {"a":2}[3,4])", R"(entry {"a":2}[3,4])"}},
      {"b", {R"(file {"a":2}[3,4])", R"(entry {"a":2}[3,4])"}},
      {"c", {R"(file {"a":2}[3,4])", R"(context {"a":2}[3,4])", R"(entry {"c":1}[3,4])"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ResolveEntry(R"({"Context":{"a":2},"Bounds":[3,4],"Include":{"Filename":")" +
                 std::string(c.name) + R"j($(frames.file)"}})j");
    EXPECT_EQ(frames.Take(), c.seen);
    EXPECT_EQ(Errors(), "");
  }
}

TEST_F(IncludeElement, ContextOfAnIncludedPageWithoutContentsIsRecorded) {
  File("a", R"({"Page":{"Context":{"c":1}}})");
  resolver.Input("{}");
  stack.Push({Parse(R"({"a": 1})"), Parse("[1, 2]")});
  EXPECT_EQ(Included(R"({"Filename":"a"})"), Parse(R"({"Page":{"Context":{"c":1}}})"));
  ASSERT_EQ(stack.frames().size(), 2U);
  EXPECT_EQ(stack.frames()[1].context, Parse(R"({"c": 1})"));
  EXPECT_EQ(stack.frames()[1].bounds, Parse("[1, 2]"));
  EXPECT_EQ(stack.frames()[0].context, Parse("{}"));
  EXPECT_EQ(Errors(), "CTemplateResolver::processPageValue: Page must have Contents member.\n");
}

TEST_F(IncludeElement, IncludedDocumentStandsOutsideTheContainer) {
  File("a", R"({"Contents":[{"RenderType":3},{"RenderType":1024,"Contents":[{"RenderType":4}]}]})");
  EXPECT_EQ(ResolveEntry(R"({"RenderType":1024,"Contents":[{"Include":{"Filename":"a"}},)"
                         R"({"RenderType":5}]},{"RenderType":1024})"),
            R"({"Contents":[{"Contents":[{"RenderType":3},{"Contents":[)"
            R"({"Container":2,"RenderType":4}],"Frame":{"Id":2},"RenderType":1024}]},)"
            R"({"Container":1,"RenderType":5}],"Frame":{"Id":1},"RenderType":1024},)"
            R"({"Frame":{"Id":3},"RenderType":1024})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(IncludeElement, ContainersAreNumberedAcrossFiles) {
  File("a", R"({"Contents":[{"RenderType":1024},{"Include":{"Filename":"b"}}]})");
  File("b", R"({"Page":{"Contents":[{"RenderType":1024}]}})");
  const std::string page = R"({"Contents":[{"Contents":[{"Frame":{"Id":1},"RenderType":1024},)"
                           R"({"Page":{"Contents":[{"Frame":{"Id":2},"RenderType":1024}]}}]},)"
                           R"({"Frame":{"Id":3},"RenderType":1024}]})";
  for (int pass = 0; pass < 2; ++pass) {
    SCOPED_TRACE(pass);
    EXPECT_EQ(Resolve(R"({"Contents":[{"Include":{"Filename":"a"}},{"RenderType":1024}]})"), page);
    EXPECT_EQ(Errors(), "");
  }
}

// --- Beside and inside other elements ---

TEST_F(IncludeElement, IncludeComesBeforeIfAndLoop) {
  const CTableHandler& handler = Handle("n", "7");
  File("a", R"({"Contents":["x"]})");
  const std::string others =
      R"j(,"If":{"Condition":"$(n)","Contents":["$(n)"]},"Loop":{"Bounds":[],"List":"$(n)"}})j";
  EXPECT_EQ(ResolveEntry(R"({"Include":{"Filename":"a"})" + others), R"({"Contents":["x"]})");
  EXPECT_EQ(Errors(), "");
  EXPECT_EQ(ResolveEntry(R"({"Include":{})" + others), "null");
  EXPECT_EQ(Errors(), filenameMessage);
  EXPECT_EQ(handler.calls(), CCalls());
}

TEST_F(IncludeElement, OtherMembersAreDroppedUnprocessed) {
  const CTableHandler& handler = Handle("n", "7");
  File("a", R"({"Contents":["x"]})");
  EXPECT_EQ(ResolveEntry(R"j({"Contents":5,"Display":["red","$(n)"],"Include":{"Filename":"a"},)j"
                         R"j("Layout":[["a","$(n)"]],"Name":"y","Play":["$(n)"],)j"
                         R"j("Prec":["b","$(n)"],"RenderType":"$(n)"})j"),
            R"({"Contents":["x"]})");
  EXPECT_EQ(handler.calls(), CCalls());
  EXPECT_EQ(Errors(), "");
}

TEST_F(IncludeElement, LoopAndIfIncludeFiles) {
  const CStackHandler handler(&stack);
  tokens.Set("stack", &handler);
  File("row4", R"j({"Contents":["row $(stack.i)"]})j");
  EXPECT_EQ(
      ResolveEntry(R"j({"Loop":{"Bounds":[0,0,9,9],"Start":4,"Size":1,"Var":"i","Contents":[)j"
                   R"j({"Include":{"Filename":"row$(stack.i)"}}]}})j"),
      R"({"Contents":[{"Contents":["row 4"]}]})");
  EXPECT_EQ(ResolveEntry(R"j({"Context":{"i":4},"If":{"Condition":1,"Contents":[)j"
                         R"j({"Include":{"Filename":"row$(stack.i)"}}]}})j"),
            R"({"Contents":[{"Contents":["row 4"]}]})");
  EXPECT_EQ(Errors(), "");
}

TEST_F(IncludeElement, FaultsAreReportedInTheOrderOfTheWalk) {
  File("a", R"({"Contents":[{"Prec":["b"]},{"Include":{"Filename":"gone"}},{"Prec":["c"]}]})");
  EXPECT_EQ(Resolve(R"({"Contents":[{"Prec":["a"]},{"Context":[],"Bounds":5,)"
                    R"("Include":{"Filename":"a"}},{"Include":{}},{"Prec":["d"]}]})"),
            R"({"Contents":[{"Prec":[0]},{"Contents":[{"Prec":[0]},null,{"Prec":[0]}]},null,)"
            R"({"Prec":[0]}]})");
  EXPECT_EQ(Errors(), std::string("CTokenResolver::stringToInt: cannot convert value to signed "
                                  "integer: a.\n"
                                  "CTemplateStack::ContextSet: preconditions.\n"
                                  "CTemplateStack::BoundsSet: preconditions.\n"
                                  "CTokenResolver::stringToInt: cannot convert value to signed "
                                  "integer: b.\n") +
                          readNothing +
                          "CTokenResolver::stringToInt: cannot convert value to signed integer: "
                          "c.\n" +
                          filenameMessage +
                          "CTokenResolver::stringToInt: cannot convert value to signed integer: "
                          "d.\n");
}

}  // namespace
