// On random pages nothing that the library writes is lost, and every node of a record has its place
// in the result.
#include <gtest/gtest.h>
#include <json/writer.h>

#include <map>
#include <string>

#include "page/fault_codes.h"
#include "page/fault_finder.h"
#include "support/page_generator.h"
#include "text/printable.h"
#include "tool/support/page_folder.h"

namespace {

using ttr::CElementNode;

constexpr std::uint32_t pageCount = 300;

std::string Text(const Json::Value& value) {
  return Json::writeString(Json::StreamWriterBuilder(), value);
}

/// A page with values for its tokens; every second one with files that it and they include.
class CRandomPage {
 public:
  explicit CRandomPage(std::uint32_t seed) : m_folder({}) {
    ttr::CPageGenerator generator(seed);
    Json::Value values;
    for (const char* name : {"n", "flights", "text", "area.left"}) {
      values[name] = generator.HandlerValue();
    }
    values["n"] = static_cast<int>(seed % 5);
    m_folder.Write("page.json", Text(generator.Document()));
    m_folder.Write("values.json", Text(values));
    if (seed % 2 == 1) return;
    m_folder.Write("a.json", Text(generator.Document()));
    m_folder.Write("b.json", Text(generator.Document()));
  }

  ttr::CPageOptions Options() const { return m_folder.Options("page.json"); }

 private:
  ttr::CPageFolder m_folder;
};

/// True for lines that faults tell in words of their own, or once for many.
bool IsRetold(const std::string& message) {
  const std::string code = ttr::kindOfMessage(message).code;
  return code == "not-an-object" || code == "no-page-or-contents" || code == "include-depth" ||
         message.rfind("ttr: ", 0) == 0;
}

TEST(RandomPages, MessagesAreRecordedAsTheyAreWritten) {
  std::size_t count = 0;
  for (std::uint32_t seed = 1; seed <= pageCount; ++seed) {
    SCOPED_TRACE(seed);
    const CRandomPage random(seed);
    ttr::CPageRunner page(random.Options());
    const ttr::CPageRunner::COutput output = page.Output(1);
    const ttr::CPassRecord record = page.Record(1);
    EXPECT_EQ(output.exception.has_value(), record.End() != nullptr);
    if (record.End() != nullptr) continue;
    std::size_t told = 0;
    for (const std::string& line : output.lines) {
      if (line.rfind("ttr: ", 0) == 0) continue;
      ASSERT_LT(told, record.messages.size()) << line;
      EXPECT_EQ(record.messages[told++].text, line);
    }
    EXPECT_EQ(told, record.messages.size());
    count += told;
  }
  EXPECT_GT(count, 200U);
}

TEST(RandomPages, WhatIsWrittenIsAFaultAsOften) {
  std::size_t messages = 0;
  std::size_t exceptions = 0;
  for (std::uint32_t seed = 1; seed <= pageCount; ++seed) {
    SCOPED_TRACE(seed);
    const CRandomPage random(seed);
    ttr::CPageRunner page(random.Options());
    const ttr::CPageRunner::COutput output = page.Output(1);
    ttr::CFaultList list;
    ttr::CRecordFaults(page, list).Add(page.Record(1));
    std::map<std::string, std::size_t> found;
    for (const ttr::CFault& fault : list.Sorted()) found[fault.message] += fault.count;
    std::map<std::string, std::size_t> written;
    for (const std::string& line : output.lines) {
      if (!IsRetold(line)) ++written[ttr::oneLine(line)];
    }
    for (const auto& [message, count] : written) {
      if (output.exception) {
        EXPECT_GE(found[message], count) << message << ": with what is behind the exception";
      } else {
        EXPECT_EQ(found[message], count) << message;
      }
      ++messages;
    }
    if (!output.exception) continue;
    EXPECT_GE(found[ttr::oneLine(*output.exception)], 1U) << *output.exception;
    ++exceptions;
  }
  EXPECT_GT(messages, 400U);
  EXPECT_GT(exceptions, 20U);
}

TEST(RandomPages, FaultsOfTextsAreFoundAtTexts) {
  std::size_t count = 0;
  for (std::uint32_t seed = 1; seed <= pageCount; seed += 2) {
    SCOPED_TRACE(seed);
    const CRandomPage random(seed);
    ttr::CPageRunner page(random.Options());
    ttr::CFaultList list;
    ttr::CRecordFaults(page, list).Add(page.Record(1));
    for (const ttr::CFault& fault : list.Sorted()) {
      const ttr::CFaultKind& kind = ttr::faultKind(fault.code);
      if (!kind.members.empty() || kind.beginning == nullptr) continue;
      EXPECT_FALSE(fault.pointer.empty()) << fault.message;
      ++count;
    }
  }
  EXPECT_GT(count, 200U);
}

/// Every node with a result has it at its pointer, and was made from what stands at its origin.
void ExpectPlaces(ttr::CPageRunner& page, const ttr::CPassRecord& record, const CElementNode& node,
                  std::size_t* count) {
  ++*count;
  EXPECT_EQ(node.result, node.pointer.Find(*record.result)) << node.pointer.Text();
  if (const ttr::CSourceFile* source = page.File(node.origin.file)) {
    EXPECT_EQ(node.origin.value, node.origin.pointer.Find(source->document()));
    EXPECT_NE(node.origin.value, nullptr) << node.origin.pointer.Text();
  }
  for (const CElementNode& child : node.children) ExpectPlaces(page, record, child, count);
}

TEST(RandomPages, NodesHaveTheirPlaces) {
  std::size_t count = 0;
  for (std::uint32_t seed = 1; seed <= pageCount; ++seed) {
    SCOPED_TRACE(seed);
    const CRandomPage random(seed);
    ttr::CPageRunner page(random.Options());
    const ttr::CPassRecord record = page.Record(1);
    if (record.End() != nullptr && !record.isRepaired) continue;
    ExpectPlaces(page, record, record.root, &count);
  }
  EXPECT_GT(count, 1000U);
}

}  // namespace
