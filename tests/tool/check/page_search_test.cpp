#include "check/page_search.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "tool/support/page_folder.h"
#include "tool_error.h"

namespace {

/// The pages, relative to the folder; a star marks those that were named.
std::vector<std::string> Found(const ttr::CPageFolder& folder,
                               const std::vector<std::string>& names) {
  std::vector<std::string> paths;
  for (const std::string& name : names) paths.push_back(folder.path() + name);
  std::vector<std::string> pages;
  for (const ttr::CFoundPage& page : ttr::findPages(paths)) {
    pages.push_back(page.path.substr(folder.path().size()) + (page.named ? "*" : ""));
  }
  return pages;
}

TEST(PageSearch, AFolderHoldsThePagesOfItsFoldersSorted) {
  const ttr::CPageFolder folder({{"b.json", R"({"Contents": []})"},
                                 {"a/z.json", R"({"Page": {}})"},
                                 {"broken.json", "{"},
                                 {"values.json", R"({"clock": 1})"},
                                 {"list.json", "[]"},
                                 {"page.txt", R"({"Contents": []})"},
                                 {".hidden.json", R"({"Contents": []})"},
                                 {".git/page.json", R"({"Contents": []})"}});
  EXPECT_EQ(Found(folder, {""}),
            (std::vector<std::string>{"/a/z.json", "/b.json", "/broken.json"}));
}

TEST(PageSearch, ANamedFileIsCheckedWhateverItHolds) {
  const ttr::CPageFolder folder({{"values.json", "{}"}, {"page.txt", "[]"}});
  EXPECT_EQ(Found(folder, {"/values.json", "/page.txt", "/none.json"}),
            (std::vector<std::string>{"/values.json*", "/page.txt*", "/none.json*"}));
}

TEST(PageSearch, APageThatIsFoundTwiceIsCheckedOnce) {
  const ttr::CPageFolder folder({{"a.json", R"({"Contents": []})"}, {"sub/b.json", "{"}});
  EXPECT_EQ(Found(folder, {"", "/./a.json", "/sub"}),
            (std::vector<std::string>{"/a.json*", "/sub/b.json"}));
}

TEST(PageSearch, ExpectedResultsAreNoPages) {
  const ttr::CPageFolder folder({{"case/template.json", R"({"Contents": []})"},
                                 {"case/expected.json", R"({"Contents": []})"},
                                 {"other/expected.json", R"({"Contents": []})"}});
  EXPECT_EQ(Found(folder, {""}),
            (std::vector<std::string>{"/case/template.json", "/other/expected.json"}));
  EXPECT_EQ(Found(folder, {"/case/expected.json"}),
            std::vector<std::string>{"/case/expected.json*"})
      << "named by the user";
}

TEST(PageSearch, AFolderWithoutPagesIsAnError) {
  const ttr::CPageFolder folder({{"values.json", "{}"}});
  EXPECT_THROW(ttr::findPages({folder.path()}), ttr::CToolError);
}

ttr::CPageIncludes Page(const char* path, std::vector<std::string> files, bool named = false) {
  return {{path, named}, std::move(files)};
}

/// What is left of one page and another.
std::vector<std::string> Rest(const ttr::CPageIncludes& one, const ttr::CPageIncludes& other) {
  std::vector<std::string> paths;
  for (const ttr::CFoundPage& left : ttr::withoutIncluded({one, other})) paths.push_back(left.path);
  return paths;
}

TEST(PageSearch, IncludedPagesAreLeftToThePageThatIncludesThem) {
  const ttr::CPageIncludes includer = Page("page.json", {"./head.json"});
  EXPECT_EQ(Rest(Page("head.json", {}), includer), std::vector<std::string>{"page.json"});
  EXPECT_EQ(Rest(Page("head.json", {}, true), includer),
            (std::vector<std::string>{"head.json", "page.json"}));
}

TEST(PageSearch, OfPagesThatIncludeEachOtherTheFirstStays) {
  EXPECT_EQ(Rest(Page("a.json", {"b.json", "a.json"}), Page("b.json", {"a.json"})),
            std::vector<std::string>{"a.json"});
  EXPECT_EQ(Rest(Page("a.json", {"a.json"}), Page("b.json", {})),
            (std::vector<std::string>{"a.json", "b.json"}));
}

}  // namespace
