// Value to compact JSON text, without JsonCpp's writer: that looks each member up by its name, and
// makes a string of everything before it writes it.
#include "template/compact_text.h"

#include <json/writer.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <string_view>

#include "util/comments.h"
#include "util/text_view.h"

namespace ttr {
namespace {

constexpr std::size_t byteCount = 256;

/// For each byte whether it stands in a JSON string as it is.
constexpr std::array<bool, byteCount> plainBytes() {
  std::array<bool, byteCount> plain{};
  for (std::size_t byte = ' '; byte <= '~'; ++byte) plain[byte] = byte != '"' && byte != '\\';
  return plain;
}

bool isPlain(std::string_view text) {
  static constexpr std::array<bool, byteCount> plain = plainBytes();
  return std::all_of(text.begin(), text.end(),
                     [](char character) { return plain[static_cast<unsigned char>(character)]; });
}

class CCompactWriter {
 public:
  /// Writes `value`; false when that cannot be done here. What was written is then of no use.
  bool write(const Json::Value& value);

  /// What was written.
  std::string text() const;

 private:
  bool writeArray(const Json::Value& array);
  bool writeObject(const Json::Value& object);
  // These two make strings, which would take room in every frame of the functions above.
  [[gnu::noinline]] bool writeString(std::string_view text);
  [[gnu::noinline]] void writeReal(double number);
  template <typename Integer>
  void writeInteger(Integer number);
  void writeText(std::string_view text);
  void writeByte(char byte) { writeText({&byte, 1}); }
  char* roomFor(std::size_t count);

  std::string m_buffer;  ///< the text, and behind it room for more
  std::size_t m_length = 0;
};

bool CCompactWriter::write(const Json::Value& value) {
  if (hasComments(value)) return false;
  switch (value.type()) {
    case Json::nullValue:
      writeText("null");
      return true;
    case Json::intValue:
      writeInteger(value.asLargestInt());
      return true;
    case Json::uintValue:
      writeInteger(value.asLargestUInt());
      return true;
    case Json::realValue:
      writeReal(value.asDouble());
      return true;
    case Json::stringValue: {
      const std::string_view text = textView(value);
      return text.data() != nullptr && writeString(text);
    }
    case Json::booleanValue:
      writeText(value.asBool() ? "true" : "false");
      return true;
    case Json::arrayValue:
      return writeArray(value);
    default:
      return writeObject(value);
  }
}

std::string CCompactWriter::text() const { return std::string(m_buffer, 0, m_length); }

bool CCompactWriter::writeArray(const Json::Value& array) {
  writeByte('[');
  Json::ArrayIndex count = 0;
  const auto end = array.end();
  for (auto entry = array.begin(); entry != end; ++entry, ++count) {
    if (count > 0) writeByte(',');
    if (!write(*entry)) return false;
  }
  writeByte(']');
  return count == array.size();
}

bool CCompactWriter::writeObject(const Json::Value& object) {
  writeByte('{');
  bool isFirst = true;
  const auto end = object.end();
  for (auto member = object.begin(); member != end; ++member) {
    if (!isFirst) writeByte(',');
    isFirst = false;
    const char* nameEnd = nullptr;
    const char* name = member.memberName(&nameEnd);
    if (!writeString({name, static_cast<std::size_t>(nameEnd - name)})) return false;
    writeByte(':');
    if (!write(*member)) return false;
  }
  writeByte('}');
  return true;
}

bool CCompactWriter::writeString(std::string_view text) {
  if (isPlain(text)) {
    char* place = roomFor(text.size() + 2);
    *place = '"';
    *std::copy(text.begin(), text.end(), place + 1) = '"';
    m_length += text.size() + 2;
    return true;
  }
  // JsonCpp's function for a single string takes it up to its first NUL.
  if (text.find('\0') != std::string_view::npos) return false;
  writeText(Json::valueToQuotedString(std::string(text).c_str()));
  return true;
}

void CCompactWriter::writeReal(double number) { writeText(Json::valueToString(number)); }

template <typename Integer>
void CCompactWriter::writeInteger(Integer number) {
  constexpr std::size_t mostDigits = 20;  // with a sign
  char* place = roomFor(mostDigits);
  m_length +=
      static_cast<std::size_t>(std::to_chars(place, place + mostDigits, number).ptr - place);
}

void CCompactWriter::writeText(std::string_view text) {
  std::copy(text.begin(), text.end(), roomFor(text.size()));
  m_length += text.size();
}

char* CCompactWriter::roomFor(std::size_t count) {
  if (m_buffer.size() - m_length < count) m_buffer.resize(2 * m_buffer.size() + count);
  return m_buffer.data() + m_length;
}

}  // namespace

std::optional<std::string> compactText(const Json::Value& value) {
  CCompactWriter writer;
  if (!writer.write(value)) return std::nullopt;
  return writer.text();
}

}  // namespace ttr
