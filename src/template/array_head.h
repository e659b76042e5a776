#ifndef SRC_TEMPLATE_ARRAY_HEAD_H
#define SRC_TEMPLATE_ARRAY_HEAD_H

#include <json/value.h>

#include <array>

namespace ttr {

/// The first entries of an array: `head[i]` is `array[i]` for every value that `array` can be. The
/// entries, `Count` at most, are found in one pass, while the index operator searches for each.
template <typename Value, Json::ArrayIndex Count>
class CArrayHead {
 public:
  explicit CArrayHead(Value& array) : m_array(array) {
    auto entry = array.begin();
    const auto end = array.end();
    for (; m_found < Count && entry != end; ++entry) m_entries[m_found++] = &*entry;
    // An array made entry by entry can have gaps, and the members of an object have no index.
    if (entry == end ? !array.isArray() || array.size() != m_found
                     : (--entry).index() != m_found - 1) {
      m_found = 0;
    }
  }

  Value& operator[](Json::ArrayIndex index) const {
    return index < m_found ? *m_entries[index] : m_array[index];
  }

 private:
  Value& m_array;
  std::array<Value*, Count> m_entries;
  Json::ArrayIndex m_found = 0;
};

}  // namespace ttr

#endif  // SRC_TEMPLATE_ARRAY_HEAD_H
