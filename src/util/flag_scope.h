#ifndef SRC_UTIL_FLAG_SCOPE_H
#define SRC_UTIL_FLAG_SCOPE_H

namespace ttr {

/// Sets a flag for as long as it lives, and leaves it as it was before.
class CFlagScope {
 public:
  CFlagScope(bool& flag, bool value) : m_flag(flag), m_before(flag) { m_flag = value; }
  ~CFlagScope() { m_flag = m_before; }
  CFlagScope(const CFlagScope&) = delete;
  CFlagScope& operator=(const CFlagScope&) = delete;

 private:
  bool& m_flag;
  bool m_before;
};

}  // namespace ttr

#endif  // SRC_UTIL_FLAG_SCOPE_H
