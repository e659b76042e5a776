#ifndef SRC_UTIL_RAISED_FLAG_H
#define SRC_UTIL_RAISED_FLAG_H

namespace ttr {

/// Raises a flag for as long as it lives, and leaves it as it was before.
class CRaisedFlag {
 public:
  explicit CRaisedFlag(bool& flag) : m_flag(flag), m_before(flag) { m_flag = true; }
  ~CRaisedFlag() { m_flag = m_before; }
  CRaisedFlag(const CRaisedFlag&) = delete;
  CRaisedFlag& operator=(const CRaisedFlag&) = delete;

 private:
  bool& m_flag;
  bool m_before;
};

}  // namespace ttr

#endif  // SRC_UTIL_RAISED_FLAG_H
