// What is begun keeps its place in the template: the text there, read again, is the value told.
#include <gtest/gtest.h>
#include <json/writer.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "exceptions/page_host.h"
#include "support/build_kind.h"
#include "support/json.h"
#include "trace/trace_listener.h"

namespace {

constexpr std::uint32_t randomPages = ttr::slowBuild ? 100 : 1000;
constexpr const char* byteOrderMark = "\xEF\xBB\xBF";

std::string withoutMark(const std::string& text) {
  return text.compare(0, 3, byteOrderMark) == 0 ? text.substr(3) : text;
}

/// Over several lines, each ended by CR and LF, behind a byte order mark.
std::string spreadOut(const std::string& json) {
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "\t";
  std::string text = byteOrderMark;
  for (const char character : Json::writeString(writer, Parse(json))) {
    if (character == '\n') text += '\r';
    text += character;
  }
  return text;
}

/// Reads what is begun in the document that it is in.
class CPlaces {
 public:
  explicit CPlaces(const CPage& page) : m_page(page) {}

  void Tell(const ttr::CTraceEvent& event) {
    if (event.event == ttr::traceEnd) m_parts.pop_back();
    if (event.event != ttr::traceBegin) return;
    CPart part{textOf(event), event.part, std::string(event.name)};
    if (event.value != nullptr) compare(event, part);
    m_parts.push_back(part);
  }

  unsigned compared() const { return m_compared; }

 private:
  struct CPart {
    std::string text;  ///< of the document
    ttr::eTracePart part;
    std::string name;
  };

  std::string textOf(const ttr::CTraceEvent& event) const {
    if (event.part != ttr::tracedDocument) return m_parts.back().text;
    if (event.name.empty()) return withoutMark(m_page.text);
    const auto file = m_page.files.find(std::string(event.name));
    return file == m_page.files.end() ? "" : withoutMark(file->second);
  }

  /// Cells and the bounds of a rotating loop are told once more when they are resolved: they have
  /// the place still, but not the value.
  bool isResolved(const CPart& part) const {
    const std::size_t open = m_parts.size();
    const bool isBounds = open > 0 && m_parts[open - 1].name == "Loop" && part.name == "Bounds";
    return isBounds || (open > 2 && m_parts[open - 2].name == "Layout" &&
                        m_parts[open - 3].name == "Loop" && part.part == ttr::tracedEntry);
  }

  /// Members that are begun again with the value that their tokens gave, or that are made.
  bool isPutToUse(const CPart& part) const {
    const bool isElement = !m_parts.empty() && m_parts.back().part == ttr::tracedElement;
    const bool inLoop = !m_parts.empty() && m_parts.back().name == "Loop";
    const bool inIf = !m_parts.empty() && m_parts.back().name == "If";
    return part.part == ttr::tracedMember &&
           (inLoop || inIf || (isElement && part.name == "Frame"));
  }

  void compare(const ttr::CTraceEvent& event, const CPart& part) {
    const auto start = static_cast<std::size_t>(event.value->getOffsetStart());
    const auto limit = static_cast<std::size_t>(event.value->getOffsetLimit());
    if (limit == 0) {  // a missing edge of a point, or a member that is put to use
      const bool isEdge = part.part == ttr::tracedEntry && event.value->isNull();
      EXPECT_TRUE(isEdge || isPutToUse(part)) << traceText(event);
      return;
    }
    ASSERT_TRUE(start < limit && limit <= part.text.size()) << traceText(event);
    const Json::Value there = Parse(part.text.substr(start, limit - start));
    if (isResolved(part)) {
      EXPECT_EQ(there.type(), event.value->type()) << traceText(event);
    } else {
      EXPECT_EQ(there, *event.value) << traceText(event);
    }
    ++m_compared;
  }

  const CPage& m_page;
  std::vector<CPart> m_parts;
  unsigned m_compared = 0;
};

unsigned comparePlaces(const CPage& page) {
  CPageHost host(page);
  CPlaces places(page);
  const CTraceListener listener([&places](const ttr::CTraceEvent& event) { places.Tell(event); });
  host.Pass();
  return places.compared();
}

TEST(TracePlaces, EverythingBegunStandsInItsDocument) {
  unsigned compared = 0;
  for (std::uint32_t seed = 0; seed < randomPages && !testing::Test::HasFailure(); ++seed) {
    CPage page = RandomPage(seed);
    SCOPED_TRACE(page.text);
    SCOPED_TRACE(seed);
    compared += comparePlaces(page);
    page.text = spreadOut(page.text);
    for (auto& file : page.files) file.second = spreadOut(file.second);
    compared += comparePlaces(page);
  }
  EXPECT_GT(compared, 30 * randomPages);
}

/// The offsets of the texts among the elements that are begun, each with the document's name.
std::vector<std::string> textsBegun(const CPage& page) {
  std::vector<std::string> found;
  std::vector<std::string> documents;
  CPageHost host(page);
  const CTraceListener listener([&](const ttr::CTraceEvent& event) {
    if (event.part == ttr::tracedDocument && event.event == ttr::traceEnd) documents.pop_back();
    if (event.event != ttr::traceBegin) return;
    if (event.part == ttr::tracedDocument) documents.emplace_back(event.name);
    if (event.part == ttr::tracedElement && event.value->isString()) {
      found.push_back(documents.back() + ":" + std::to_string(event.value->getOffsetStart()));
    }
  });
  host.Pass();
  return found;
}

TEST(TracePlaces, EveryCopyOfALoopHasThePlaceOfItsTemplate) {
  EXPECT_EQ(textsBegun({R"({"Contents":[{"Loop":{"Start":0,"Size":2,"Layout":[[[0,0],[1,1]]],)"
                        R"("Contents":["a",{"Contents":["b"]}]}},"c"]})",
                        {},
                        {}}),
            (std::vector<std::string>{":78", ":95", ":78", ":95", ":104"}));
}

TEST(TracePlaces, AnIncludedFileHasPlacesOfItsOwn) {
  EXPECT_EQ(
      textsBegun({"\xEF\xBB\xBF{\r\n\"Contents\":[\"a\",{\"Include\":{\"Filename\":\"f\"}},\"c\"]}",
                  {},
                  {{"f", "\xEF\xBB\xBF{\r\n\r\n\"Contents\":[\"b\"]}"}}}),
      (std::vector<std::string>{":15", "f:17", ":48"}));
}

}  // namespace
