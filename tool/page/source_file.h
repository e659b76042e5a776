#ifndef TOOL_PAGE_SOURCE_FILE_H
#define TOOL_PAGE_SOURCE_FILE_H

#include <json/value.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "page/json_pointer.h"

namespace ttr {

/// A place in a text file, as compilers print it: line and column count from 1, columns in bytes.
struct CPlace {
  std::string file;
  std::size_t line = 1;
  std::size_t column = 1;

  /// "FILE:LINE:COLUMN".
  std::string Text() const;
};

/// A JSON file that knows where in its text each value stands.
class CSourceFile {
 public:
  struct CSyntaxError {
    CPlace place;
    std::string reason;  ///< one line, without a full stop at the end
  };

  /// Reads `text`, the text of the file `name`, with the settings of the library's own reader, but
  /// for comments, which are dropped.
  CSourceFile(std::string name, std::string text);

  const std::string& name() const { return m_name; }
  const std::string& text() const { return m_text; }
  /// The text with blanks for its comments, so that what is made of it has none, and every value
  /// stays in its place.
  std::string TextWithoutComments() const;
  /// Null when the text is no JSON.
  const Json::Value& document() const { return m_document; }
  const std::vector<CSyntaxError>& errors() const { return m_errors; }

  CPlace PlaceAt(std::size_t offset) const;
  /// Where the value that `pointer` leads to begins; that of its nearest parent when there is none.
  CPlace PlaceOf(const CJsonPointer& pointer) const;
  /// Where the name of the member that `pointer` leads to begins, its quote included; as `PlaceOf`
  /// for the entry of an array and for the document.
  CPlace PlaceOfName(const CJsonPointer& pointer) const;
  /// Where `part` begins in the text of the string that `pointer` leads to, the one behind `before`
  /// others; as `PlaceOf` when it is not found there as written.
  CPlace PlaceOfPart(const CJsonPointer& pointer, const std::string& part,
                     std::size_t before = 0) const;
  /// As `PlaceOfPart`, for the last time that `part` stands there.
  CPlace PlaceOfLastPart(const CJsonPointer& pointer, const std::string& part) const;

 private:
  const Json::Value& NearestValue(const CJsonPointer& pointer) const;
  std::size_t StartOf(const Json::Value& value) const;
  /// The text of the string that `pointer` leads to, as it is written; empty for anything else.
  std::string_view WrittenString(const CJsonPointer& pointer) const;

  std::string m_name;
  std::string m_text;
  Json::Value m_document;
  std::vector<CSyntaxError> m_errors;
  std::vector<std::size_t> m_lineStarts;  ///< offsets
  std::size_t m_begin = 0;  ///< behind a byte order mark, which JsonCpp does not count
};

}  // namespace ttr

#endif  // TOOL_PAGE_SOURCE_FILE_H
