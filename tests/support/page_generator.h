#ifndef TESTS_SUPPORT_PAGE_GENERATOR_H
#define TESTS_SUPPORT_PAGE_GENERATOR_H

#include <json/value.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

namespace ttr {

/// Random templates: the same ones for the same seed, on every platform. They use all members and
/// all forms of tokens, and now and then a member of the wrong kind, so that some pages end in an
/// exception. A page is small: lists of up to four entries, elements four deep.
///
/// Tokens name the handlers `n`, `flights`, `text`, `area.left` and `context`, which the user
/// registers or not; numbers from `n` go into the ranges of loops. Includes name `a.json`, `b.json`
/// and files that do not exist. A document has at most one Include, outside of loops: files that
/// include each other are a chain, which the depth limit ends.
class CPageGenerator {
 public:
  explicit CPageGenerator(std::uint32_t seed);

  /// A whole template or included file.
  Json::Value Document();

  /// An element object.
  Json::Value Element();

  /// A value for the member `name` of an element, an "If" or a "Loop", of the wrong kind now and
  /// then. A "Layout" is an element's; "Loop.Layout" is the other one.
  Json::Value MemberValue(const std::string& name);

  /// Text with any number of tokens; some name an image.
  std::string Text();

  /// What a token handler might deliver.
  Json::Value HandlerValue();

 private:
  using CMaker = Json::Value (CPageGenerator::*)();
  struct CMember;

  std::size_t pick(std::size_t bound);
  int pickInt(int low, int high);
  bool chance(std::size_t percent);
  template <typename T, std::size_t size>
  const T& pickFrom(const T (&table)[size]) {
    return table[pick(size)];
  }
  template <std::size_t size>
  Json::Value object(const CMember (&members)[size]);
  Json::Value array(std::size_t least, std::size_t most, CMaker entry);

  Json::Value contents();
  Json::Value contentsEntry();
  Json::Value include();
  Json::Value ifElement();
  Json::Value loop();
  Json::Value list();
  Json::Value layouts();
  Json::Value cells();
  Json::Value cell();
  Json::Value layout();
  Json::Value point();
  Json::Value bounds();
  Json::Value edge();
  Json::Value display();
  Json::Value colour();
  Json::Value integers();
  Json::Value integer();
  Json::Value cellSize();
  Json::Value renderType();
  Json::Value play();
  Json::Value context();
  Json::Value variable();
  Json::Value fileName();
  Json::Value scalar();
  Json::Value wrongKind();
  std::string token();

  std::mt19937 m_random;
  int m_depth = 0;
  int m_loops = 0;
  bool m_included = false;
};

}  // namespace ttr

#endif  // TESTS_SUPPORT_PAGE_GENERATOR_H
