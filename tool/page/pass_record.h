#ifndef TOOL_PAGE_PASS_RECORD_H
#define TOOL_PAGE_PASS_RECORD_H

#include <json/value.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "page/json_pointer.h"

namespace ttr {

/// A value of a template: the file it stands in, and where.
struct CTemplateValue {
  std::string file;  ///< as pages name it; CPageRunner::pageKey for the page
  CJsonPointer pointer;
  /// Borrowed from the runner's source file; null for nothing, and where only the place counts.
  const Json::Value* value = nullptr;
};

/// What binds a variable: a member of a "Context", or the member of a "Loop" that names it.
struct CBindingFact {
  std::string member;  ///< "Context", "Var", ...
  CTemplateValue place;
  Json::Value value;  ///< of the variable; told only for a token that came to null
};

/// A token of an element's text, or a path inside of the token before it, and the answer.
struct CTokenFact {
  CJsonPointer text;  ///< from the element to the text
  std::string body;
  bool isPath = false;                  ///< stands in the index or the operand of the token
  bool answered = false;                ///< false when an exception came instead
  std::string handler;                  ///< empty when there is none of that name
  std::optional<CBindingFact> binding;  ///< when the page itself bound what was asked for
  Json::Value value;
};

/// An edge or a size on its way to a number.
struct CMeasureFact {
  Json::Value replaced;  ///< what is written, with its tokens replaced
  int origin = 0;
  int extent = 0;
  std::optional<int> percentage;
  bool isNumber = true;  ///< false for what converts to no integer, and counts as 0
};

/// One of the entries of a "Bounds".
struct CBoundsEntryFact {
  Json::Value written;
  std::optional<CMeasureFact> measure;  ///< none when the entry stays, or is none of the first four
  Json::Value result;
};

/// The "Bounds" of an element.
struct CBoundsFact {
  Json::Value written;
  Json::Value result;
  std::vector<CBoundsEntryFact> entries;
};

struct CIfFact {
  std::optional<Json::Value> condition;  ///< with its tokens replaced; none without "Condition"
  std::string comparison;                ///< the member that compares; empty for the truth value
  Json::Value operand;
  bool holds = false;
  Json::Value comparedCondition;  ///< as it was compared
  Json::Value comparedOperand;
};

struct CIncludeFact {
  std::optional<Json::Value> filename;  ///< with its tokens replaced; none without "Filename"
};

struct CCopyFact {
  int index = 0;
  int position = 0;
  Json::Value bounds;  ///< in force in the copy
};

struct CLoopFact {
  bool isRotating = false;
  std::vector<std::pair<std::string, Json::Value>>
      members;  ///< "List", "Start" ... as far as given
  int start = 0;
  int count = 0;
  int step = 0;
  std::optional<std::size_t> layout;  ///< the one that was chosen, from 0
  std::vector<CCopyFact> copies;
};

/// One entry of a resolved page: the template value that it was made from, and what happened on the
/// way. The tree mirrors the nesting of the result: each copy of a loop's contents has nodes of its
/// own. What an If that does not hold would have shown has nodes, too, without facts.
struct CElementNode {
  enum eKind {
    kindDocument,  ///< the page, or an included file inside its Include
    kindElement,   ///< an object that is resolved in place
    kindInclude,   ///< replaced by the document that is its only child
    kindIf,        ///< replaced by its contents or null
    kindLoop,      ///< replaced by copies of its contents
    kindText,      ///< a string, whatever its token made of it
    kindOther,     ///< anything else, left as it is
  };

  eKind kind = kindOther;
  CTemplateValue origin;
  CJsonPointer pointer;                 ///< in the resolved page
  const Json::Value* result = nullptr;  ///< borrowed from the record; null when it is missing there
  std::optional<std::size_t> copy;      ///< for a direct child of a loop, which copy, from 0
  std::vector<CElementNode> children;   ///< entries of "Contents", in order

  Json::Value enclosing;  ///< the bounds that it is measured against; null without
  std::optional<CBoundsFact> bounds;
  std::optional<CIfFact> test;
  std::optional<CIncludeFact> include;
  std::optional<CLoopFact> loop;
  std::vector<CTokenFact> tokens;
  std::vector<std::size_t> messages;  ///< of the record, about this but not about its children
  bool isLowercased = false;          ///< a text that names an image or font file

  /// True when the element was to be shown but is null in the result.
  bool IsNull() const { return result == nullptr || result->isNull(); }
};

/// The name of a kind in reports: "element", "Include", ...
const char* kindName(CElementNode::eKind kind);

/// Nodes from the root on, each inside of the one before.
using CNodeWay = std::vector<const CElementNode*>;

/// The way to the node at `pointer` in the resolved page; empty when there is none.
CNodeWay wayTo(const CElementNode& root, const CJsonPointer& pointer);

/// An Include on the way to an included file.
struct CIncludeStep {
  CTemplateValue element;
  std::string file;  ///< the one that it includes
};

/// Something that the library said, and the part of a template that it was working on.
struct CMessageFact {
  std::string text;
  CTemplateValue object;  ///< the innermost element or document
  bool isDocument = false;
  CJsonPointer pointer;           ///< the innermost value in the same file
  std::string token;              ///< the body of the token that was being replaced; often empty
  std::vector<CIncludeStep> way;  ///< outermost first
  bool isAside = false;  ///< comes only of taking out what ended the pass, and is not to be told
};

/// What ended a pass, and the element as far as it was resolved then.
struct CPassEnd {
  CMessageFact exception;
  CElementNode element;
};

/// A pass of a page: what came of it and how.
///
/// Of a pass that an exception ends, the value that the library was working on is taken out, and
/// the pass is made again for what is behind it. The tree is then that of the last one.
struct CPassRecord {
  /// The resolved page; null when the pass was ended and not made again.
  std::unique_ptr<Json::Value> result = std::make_unique<Json::Value>();
  CElementNode root;
  unsigned pass = 1;
  std::vector<CMessageFact> messages;      ///< of the last pass made, in order
  std::vector<CMessageFact> lostMessages;  ///< of what was taken out
  std::vector<CPassEnd> ends;              ///< in the order in which they were reached
  bool isRepaired = false;  ///< all that ended the pass was taken out, and the tree is whole
  bool rotates = false;     ///< a rotating loop was shown: the next pass may be another

  /// What ended the pass; null when it came to its end.
  const CPassEnd* End() const { return ends.empty() ? nullptr : &ends.front(); }

  CPassRecord() = default;
  CPassRecord(CPassRecord&&) = default;
  CPassRecord& operator=(CPassRecord&&) = default;
};

}  // namespace ttr

#endif  // TOOL_PAGE_PASS_RECORD_H
