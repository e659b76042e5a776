// How deep pages may nest, and what that takes of the stack. The figures are printed.
#include <gtest/gtest.h>
#include <json/value.h>
#include <unistd.h>

#include <cstddef>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <string>

#include "TokenTemplateHandlers/json_handler.h"
#include "TokenTemplateResolver/json_text.h"
#include "TokenTemplateResolver/template_resolver.h"
#include "resources/nested_page.h"
#include "resources/painted_stack.h"
#include "support/build_kind.h"
#include "support/cerr_capture.h"

namespace {

constexpr std::size_t KiB = 1024;

// AddressSanitizer puts red zones around the variables of each function: a grid takes four times
// the stack for a level of Process, and a hundred grids 690 kB in all.
constexpr std::size_t stackFactor = ttr::addressSanitized ? 3 : 1;

/// The stack of a usual thread, and that of a frugal host's.
constexpr std::size_t usualStack = 8192 * KiB * stackFactor;
constexpr std::size_t smallStack = 512 * KiB * stackFactor;

constexpr bool hasRoom = sizeof(void*) == 8 && !ttr::slowBuild;

/// Reaches what takes most stack at the end of a branch: tokens, the C library's regular
/// expressions and scanf.
constexpr char heavyElement[] = R"j({"Bounds":["5%","6",70,80],"Display":["#1,2,3","x#12 34 56"],)j"
                                R"j("Contents":["Bilder/Ä$(volume).PNG"]})j";

/// A host with a screen and one handler.
class CHost {
 public:
  CHost() {
    tokens.Set("volume", &m_volume);
    resolver.SetScreenSize(720, 1280);
  }

  /// The resolved page, or the text of an exception.
  std::string Resolve(const std::string& page) {
    try {
      resolver.Input(page);
      resolver.Process();
      return resolver.Output();
    } catch (const std::exception& error) {
      return error.what();
    }
  }

  CTokenResolver tokens;
  CTemplateStack stack;
  CTemplateResolver resolver{&tokens, &stack};

 private:
  CJsonHandler m_volume{7};
};

std::string Resolved(const std::string& page) { return CHost().Resolve(page); }

/// A folder with a chain of files, each of which includes the next.
class CIncludeChain {
 public:
  CIncludeChain(const CNesting& nesting, int levels, int files)
      : m_folder(std::filesystem::path(::testing::TempDir()) /
                 ("ttr-depth-" + std::to_string(getpid()))) {
    std::filesystem::create_directories(m_folder);
    for (int i = 0; i < files; ++i) {
      const std::string innermost = i + 1 < files ? Include(i + 1) : R"("end")";
      std::ofstream(File(i)) << NestedPage(nesting, levels, innermost);
    }
  }
  ~CIncludeChain() { std::filesystem::remove_all(m_folder); }
  CIncludeChain(const CIncludeChain&) = delete;
  CIncludeChain& operator=(const CIncludeChain&) = delete;

  /// The element that includes file `number`, three values deep.
  std::string Include(int number) const {
    return R"({"Include":{"Filename":")" + File(number).string() + R"("}})";
  }

 private:
  std::filesystem::path File(int number) const { return m_folder / std::to_string(number); }

  std::filesystem::path m_folder;
};

/// The stack that each further level takes of `step`, which is given the levels.
double StackPerLevel(const std::function<std::size_t(int)>& step) {
  return static_cast<double>(step(300) - step(100)) / 200;
}

void PrintFigures(const CNesting& nesting) {
  CHost host;
  const auto page = [&nesting](int levels) { return NestedPage(nesting, levels, heavyElement); };
  const double input = StackPerLevel([&](int levels) {
    return StackUsedBy([&] { host.resolver.Input(page(levels)); }, usualStack);
  });
  const double process = StackPerLevel([&](int levels) {
    host.resolver.Input(page(levels));
    return StackUsedBy([&] { host.resolver.Process(); }, usualStack);
  });
  const double output = StackPerLevel([&](int levels) {
    host.Resolve(page(levels));
    return StackUsedBy([&] { host.resolver.Output(); }, usualStack);
  });
  const std::size_t all = StackUsedBy([&] { Resolved(page(100)); }, usualStack);
  std::cout << "stack: " << nesting.name << ": a level takes " << input << " bytes in Input, "
            << process << " in Process, " << output << " in Output; 100 levels " << all
            << " in all\n";
}

TEST(Depth, AValueLiesInAThousandArraysAndNoMore) {
  std::string fits;
  std::string tooDeep;
  const auto read = [](const std::string& text) -> std::string {
    std::string errors;
    try {
      return jsoncpp_string::toString(jsoncpp_string::toJsonObject(text, &errors)) + errors;
    } catch (const std::exception& error) {
      return error.what();
    }
  };
  const std::string arrays = Repeated("[", 1000) + Repeated("]", 1000);
  StackUsedBy([&] { fits = read(arrays); }, usualStack);
  StackUsedBy([&] { tooDeep = read("[" + arrays + "]"); }, usualStack);
  EXPECT_EQ(fits, arrays);
  EXPECT_EQ(tooDeep, "Exceeded stackLimit in readValue().");
}

TEST(Depth, AFileNestsAsDeepAsJsonCppReads) {
  const CCerrCapture errors;
  for (const CNesting& nesting : nestings) {
    SCOPED_TRACE(nesting.name);
    const int most = MostLevels(nesting, 1);
    std::string fits;
    std::string tooDeep;
    StackUsedBy([&] { fits = Resolved(NestedPage(nesting, most, R"("end")")); }, usualStack);
    StackUsedBy([&] { tooDeep = Resolved(NestedPage(nesting, most + 1, R"("end")")); }, usualStack);
    EXPECT_EQ(fits, NestedResult(most, R"("end")"));
    EXPECT_EQ(tooDeep, "Exceeded stackLimit in readValue().");
  }
}

TEST(Depth, ElevenIncludedFilesWithDeepContents) {
  for (const CNesting& nesting : nestings) {
    SCOPED_TRACE(nesting.name);
    // Each loop keeps a copy of all that lies in it, so that as many as can be read take 1.3 GB:
    // only where the machine and the build have room for that.
    const bool copies = std::string(nesting.open).find("Loop") != std::string::npos;
    const int most = copies && !hasRoom ? 60 : MostLevels(nesting, 3);
    const CIncludeChain chain(nesting, most, 11);
    std::string result;
    const std::size_t used = StackUsedBy(
        [&] { result = Resolved(NestedPage(nesting, most, chain.Include(0))); }, usualStack);
    // Each document is itself a level.
    const int levels = 12 * (most + 1) - 1;
    EXPECT_EQ(result, NestedResult(levels, R"("end")"));
    std::cout << "stack: " << nesting.name << ": " << levels + 1 << " levels of Contents in twelve "
              << "documents take " << used << " bytes\n";
  }
}

TEST(Depth, LoopsInLoopsInLoops) {
  const auto loop = [](const std::string& contents) {
    return R"({"Loop":{"List":[1,2,3,4,5,6,7,8,9,10],"CellWidth":1,"CellHeight":1,"Layout":[[)"
           R"([0,0],[1,0],[2,0],[3,0],[4,0],[5,0],[6,0],[7,0],[8,0],[9,0]]],"Contents":[)" +
           contents + "]}}";
  };
  const auto copies = [](const std::string& entry) {
    std::string list = Repeated(entry + ",", 10);
    list.pop_back();
    return R"({"Contents":[)" + list + "]}";
  };
  std::string result;
  StackUsedBy([&] { result = Resolved(R"({"Contents":[)" + loop(loop(loop(R"("end")"))) + "]}"); },
              smallStack);
  EXPECT_EQ(result, R"({"Contents":[)" + copies(copies(copies(R"("end")"))) + "]}");
}

TEST(Depth, AHundredLevelsFitASmallStack) {
  const CCerrCapture errors;
  for (const CNesting& nesting : nestings) {
    SCOPED_TRACE(nesting.name);
    PrintFigures(nesting);
    const std::string page = NestedPage(nesting, 100, heavyElement);
    ASSERT_LE(StackUsedBy([&] { Resolved(page); }, usualStack), smallStack);
    std::string result;
    StackUsedBy([&] { result = Resolved(page); }, smallStack);
    EXPECT_EQ(result, Resolved(page));
    EXPECT_NE(result.find("7.png"), std::string::npos) << result;
  }
}

}  // namespace
