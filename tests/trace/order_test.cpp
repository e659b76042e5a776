// On random pages: parts lie within each other, each event has its place in a part, and the
// messages are those on standard error.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "exceptions/page_host.h"
#include "support/build_kind.h"
#include "support/cerr_capture.h"
#include "trace/trace_listener.h"

namespace {

constexpr std::uint32_t randomPages = ttr::slowBuild ? 100 : 2000;

struct CPart {
  ttr::eTracePart part;
  std::string name;
};

/// Keeps the parts that are begun, and says what does not fit into the innermost one.
class COrder {
 public:
  void Tell(const ttr::CTraceEvent& event) {
    switch (event.event) {
      case ttr::traceBegin:
        EXPECT_TRUE(mayBegin(event)) << traceText(event) << " within " << innermost();
        m_parts.push_back({event.part, std::string(event.name)});
        break;
      case ttr::traceEnd:
        ASSERT_FALSE(m_parts.empty()) << traceText(event);
        EXPECT_EQ(event.part, m_parts.back().part) << traceText(event);
        m_parts.pop_back();
        break;
      default:
        EXPECT_TRUE(mayBeTold(event.event)) << traceText(event) << " within " << innermost();
    }
    m_told = std::max(m_told, m_parts.size());
  }

  std::size_t open() const { return m_parts.size(); }
  std::size_t deepest() const { return m_told; }
  void Clear() { m_parts.clear(); }

 private:
  bool isIn(ttr::eTracePart part) const { return !m_parts.empty() && m_parts.back().part == part; }
  bool isInMember(std::initializer_list<const char*> names) const {
    return isIn(ttr::tracedMember) &&
           std::find(names.begin(), names.end(), m_parts.back().name) != names.end();
  }

  bool mayBegin(const ttr::CTraceEvent& event) const {
    switch (event.part) {
      case ttr::tracedDocument:
        return event.name.empty() && event.value != nullptr ? m_parts.empty()
                                                            : isInMember({"Include"});
      case ttr::tracedElement:
        return isInMember({"Contents"}) || isIn(ttr::tracedCopy);
      case ttr::tracedMember:
        return isIn(ttr::tracedDocument) || isIn(ttr::tracedElement) ||
               isInMember({"Page", "Include", "If", "Loop"});
      case ttr::tracedEntry:
        return isIn(ttr::tracedEntry) ||
               isInMember({"Bounds", "Layout", "Display", "Play", "Prec", "Context", "Loop"});
      case ttr::tracedCopy:
        return isInMember({"Loop"});
      default:
        return isIn(ttr::tracedElement) || isIn(ttr::tracedEntry) || isIn(ttr::tracedMember) ||
               isIn(ttr::tracedToken);
    }
  }

  bool mayBeTold(ttr::eTraceEvent event) const {
    switch (event) {
      case ttr::traceMeasure:
        return isIn(ttr::tracedEntry);
      case ttr::traceVerdict:
        return isInMember({"If"});
      case ttr::traceRange:
        return isInMember({"Loop"});
      case ttr::traceLayout:
        return isInMember({"Layout"});
      case ttr::traceVariable:
        return isIn(ttr::tracedCopy);
      case ttr::traceReplaced:
        return isIn(ttr::tracedElement);
      case ttr::traceLowercased:
        return isInMember({"Contents"});
      default:
        return true;
    }
  }

  std::string innermost() const {
    if (m_parts.empty()) return "nothing";
    return std::to_string(m_parts.back().part) + " " + m_parts.back().name;
  }

  std::vector<CPart> m_parts;
  std::size_t m_told = 0;
};

TEST(TraceOrder, PartsLieWithinEachOtherAndEventsWithinTheirPart) {
  std::size_t deepest = 0;
  for (std::uint32_t seed = 0; seed < randomPages && !testing::Test::HasFailure(); ++seed) {
    const CPage page = RandomPage(seed);
    SCOPED_TRACE(page.text);
    SCOPED_TRACE(seed);
    CPageHost host(page);
    COrder order;
    const CTraceListener listener([&order](const ttr::CTraceEvent& event) { order.Tell(event); });
    const std::string outcome = host.Pass();
    const bool ended = outcome.find("\nthrown: nothing\n") != std::string::npos;
    EXPECT_TRUE(!ended || order.open() == 0) << order.open();
    deepest = std::max(deepest, order.deepest());
  }
  EXPECT_GT(deepest, 10U);
}

TEST(TraceOrder, MessagesAreThoseOnStandardErrorAndToldBefore) {
  unsigned messages = 0;
  for (std::uint32_t seed = 0; seed < randomPages && !testing::Test::HasFailure(); ++seed) {
    const CPage page = RandomPage(seed);
    SCOPED_TRACE(page.text);
    SCOPED_TRACE(seed);
    CPageHost host(page);
    CCerrCapture errors;
    std::string told;
    const CTraceListener listener([&](const ttr::CTraceEvent& event) {
      if (event.event != ttr::traceMessage) return;
      EXPECT_EQ(errors.Take(), told);  // the message before this one
      told = std::string(event.text) + "\n";
      ++messages;
    });
    host.Pass();
    EXPECT_EQ(errors.Take(), told);
  }
  EXPECT_GT(messages, randomPages);
}

}  // namespace
