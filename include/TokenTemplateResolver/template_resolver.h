#ifndef TOKENTEMPLATERESOLVER_TEMPLATE_RESOLVER_H
#define TOKENTEMPLATERESOLVER_TEMPLATE_RESOLVER_H

#include <json/value.h>

#include <cstdint>
#include <locale>
#include <string>
#include <vector>

#include "TokenTemplateResolver/export.h"
#include "TokenTemplateResolver/template_stack.h"
#include "TokenTemplateResolver/token_resolver.h"

namespace ttr {
struct CElementMembers;
class CLoopList;
}  // namespace ttr

/// Turns a render template, JSON text that describes one screen page, into the resolved page.
///
///     CTokenResolver tokens;
///     tokens.Set("clock", &clockHandler);
///     CTemplateStack stack;
///     CTemplateResolver resolver(&tokens, &stack);
///     resolver.SetScreenSize(720, 1280);     // height, width
///     resolver.Input(templateText);
///     resolver.Process();
///     std::string page = resolver.Output();  // compact JSON text
///
/// Repeat `Input`, `Process` and `Output` for the next page, or for the same page again: each pass
/// advances rotating loops. A resolver that is kept is fastest: texts that it has read before, up
/// to 32 of them with 64 KiB in all, are copied in place of being parsed again, included files too,
/// which are read each time.
///
/// Faults in the template never stop it: each writes one line on std::cerr and goes on with a
/// defined value. What JsonCpp and the host's handlers throw passes through; the stack then keeps
/// the frames pushed so far, and the next `Input` starts clean.
///
/// Token resolver, its handlers and the stack are borrowed and must outlive the resolver. One
/// resolver with its stack is used by one thread at a time.
class TTR_EXPORT CTemplateResolver {
 public:
  /// The kind of an element, told by its "RenderType".
  enum eElementType : std::int32_t {
    elementNone = 0,       ///< no usable RenderType
    elementPlain = 1,      ///< an element that may be a member of a container
    elementContainer = 2,  ///< RenderType 1024
  };

  /// The test that an "If" makes, told by its comparison member.
  enum eExpressionOp : std::int32_t {
    opNone = 0,         ///< no "Condition": invalid
    opTruth = 1,        ///< "Condition" alone: its truth value
    opEquals = 2,       ///< "Equals": same JSON type and value, or member of an array
    opNotEquals = 3,    ///< "NotEquals"
    opIntEqual = 4,     ///< "=="
    opIntNotEqual = 5,  ///< "!="
    opIntLess = 6,      ///< "<"
    opIntGreater = 7,   ///< ">"
  };

  /// The expression of an "If", its values processed.
  struct CExpression {
    eExpressionOp op = opNone;
    Json::Value condition;
    Json::Value operand;  ///< null when there is no comparison member
  };

  /// The indices that a loop runs over: `start` + k * `step` for k from 0 to `count` - 1.
  struct CLoopRange {
    bool valid = false;  ///< false after a fault and for an empty range; then all fields are 0
    int start = 0;
    int count = 0;
    int step = 0;  ///< +1 or -1
  };

  CTemplateResolver(const CTokenResolver* tokenResolver, CTemplateStack* stack);

  // --- The host's operations: template_resolver.cpp ---

  /// Sets the size of the screen in its own units; it takes effect with the next `Input`. Without
  /// a size (either value below 1) there are no screen bounds to measure against.
  void SetScreenSize(int height, int width);

  /// Starts over with the template `text`: empties the stack, pushes the screen's frame, parses.
  /// Text that is no JSON object writes one message on std::cerr.
  /// \throws Json::LogicError when the text before was parsed to a scalar, Json::RuntimeError when
  ///         arrays and objects nest deeper than JsonCpp's limit (1000)
  void Input(const std::string& text);

  /// Resolves the document in place. A second call resolves the resolved document again.
  /// \throws Json::Exception for members of the wrong kind and numbers out of range;
  ///         std::runtime_error for a division by zero in a token; whatever a handler or the
  ///         host's own ttr::readIncludedFile throws
  void Process();

  /// The document as compact JSON text.
  std::string Output() const;

  // The steps from here on are the road of a template, in the order of processing. Hosts need none
  // of them; they are exported so that each can be driven and tested as it stands.

  /// Parses `text` into `out`; one message on std::cerr when the result is not an object.
  /// \throws Json::RuntimeError when arrays and objects nest deeper than JsonCpp's limit (1000)
  void read(Json::Value& out, const std::string& text);

  /// Pushes the frame that carries the screen's bounds, unless there is no screen size.
  void pushScreenSize();

  // --- The walk over the elements: contents_walk.cpp ---
  // `container` is the id of the container that encloses what is walked, 0 when there is none.

  /// Resolves a whole document: the template or an included file.
  void process(Json::Value& document);
  void processPageValue(Json::Value& page);

  /// Resolves each entry of a "Contents" array, then lowercases those that name files.
  void processContentsArray(Json::Value& contents, int container);

  /// Resolves one entry; an element object gets a stack frame of its own meanwhile.
  void processContentsValue(Json::Value& value, int container);

  /// Resolves one element, member by member in their fixed order.
  void processContentsObject(Json::Value& element, int container);
  eElementType getElementType(const Json::Value& renderType) const;

  /// Marks an element as member of its container, or numbers a container. Returns the container
  /// id for the element's own contents.
  int processContainment(Json::Value& element, eElementType type, int container);

  /// The next container id: 1, 2, 3, ... from each `Process` on.
  int nextContainerID();

  // --- Context and presentation, in place: presentation_elements.cpp ---

  /// Colours to colour words; [0, 0, 0] for an empty member.
  void processContentsDisplayElement(Json::Value& display);
  void processArrayColour(Json::Value& colours) const;

  /// Integers; [0, 0, 0] for an empty member.
  void processContentsPrecElement(Json::Value& prec);
  void processArrayInteger(Json::Value& integers) const;

  /// Values of any type; [0, 0, 0, false] for an empty member.
  void processContentsPlayElement(Json::Value& play);

  /// Processes the members and records the object as the top frame's context.
  void processContentsContextElement(Json::Value& context);

  // --- Geometry, in place: bounds_element.cpp ---
  // Measured against the nearest enclosing bounds; -1 stands for an origin or extent that is
  // absent.

  /// Makes a "Bounds" array absolute and records it as the top frame's bounds.
  void processContentsBoundsElement(Json::Value& bounds);

  /// Makes each point of a "Layout" array absolute.
  void processLayoutElement(Json::Value& layout);
  void processArrayBoundsEdge(Json::Value& point) const;
  void processBoundsEdge(Json::Value& edge, int origin, int extent) const;
  void processBoundsSize(Json::Value& size, int origin, int extent) const;

  // --- Elements that are replaced; each returns what takes the element's place ---

  /// include_element.cpp: the resolved document in the file "Filename"; null when there is none.
  Json::Value processContentsIncludeElement(Json::Value& include);

  /// if_element.cpp: an object with the resolved "Contents" when the expression holds, else null.
  Json::Value processContentsIfElement(Json::Value& ifValue, int container);
  CExpression processContentsIfExpressionGet(Json::Value& ifValue);

  /// Converts the fields of `expression` as its operator wants them, and tells whether it holds.
  bool processContentsIfExpressionEval(CExpression& expression);

  /// loop_element.cpp: an object with the copies of the loop's "Contents"; inside a container also
  /// with "Bounds", "Frame" and "RenderType". A grid loop has no "Contents" after a fault in its
  /// description and with an empty range; outside a container it is then null.
  Json::Value processContentsLoopElement(Json::Value& loop, int container);

  /// loop_range.cpp: the range that "Start", "Stop", "Offset" and "Size" of the loop description
  /// `element` give for `list`, the evaluated "List".
  CLoopRange loopElementGetRange(const Json::Value& element, const Json::Value& list) const;

  /// loop_grid.cpp: one copy of the contents for each step of `range`, in the cells of the layout
  /// that fits best. The loop's frame is on top of the stack; `container` is the id that the copies
  /// are members of. `*right` and `*bottom`, either of which may be null, are raised to the
  /// greatest edges of the cells used. Null after a fault in the description.
  Json::Value loopElementIterate(Json::Value& loop, const Json::Value& list,
                                 const CLoopRange& range, int container, int* right, int* bottom);

  // --- Single values: value_processing.cpp ---

  /// Substitutes the tokens of one value.
  void processValue(Json::Value& value) const;

  /// A processed copy of the member `key`; null when there is none. The template is not changed.
  Json::Value getValueProcessed(const Json::Value& object, const char* key) const;

  /// The text of the member `key`, as it stands; empty when it is no string.
  std::string getVarNameAsString(const Json::Value& object, const char* key) const;

  /// Substitutes the tokens of each direct entry of an array or object.
  void processList(Json::Value& list) const;

  /// Lowercases a string that names an image or font file.
  void lowercaseContentsValue(Json::Value& value) const;

 private:
  struct CParsedText {
    std::string text;
    std::locale locale;  // which decides what is a number
    Json::Value document;
  };

  /// A flag of one resolver's pass: in a copy of the resolver it is not raised.
  struct CPassFlag {
    CPassFlag() = default;
    CPassFlag(const CPassFlag&) {}
    CPassFlag& operator=(const CPassFlag&) { return *this; }

    bool isRaised = false;
  };

  const Json::Value* parsedBefore(const std::string& text);
  void keepParsed(const std::string& text, const Json::Value& document);
  void processOwnElement(Json::Value& element, int container);
  void processMembers(Json::Value& element, const ttr::CElementMembers& members, int container);
  void processPlainMembers(Json::Value& element, const ttr::CElementMembers& members,
                           int container);
  void replaceByIfContents(Json::Value& element, Json::Value& ifValue, int container);
  void resolveBounds(Json::Value& bounds);
  Json::Value* resolveIfContents(Json::Value& ifValue, int container);
  Json::Value includedDocument(const Json::Value& include);
  Json::Value expandLoop(Json::Value& loop, int container);
  Json::Value expandGridLoop(Json::Value& loop, Json::Value& list, const CLoopRange& range,
                             int container);
  Json::Value fillGrid(Json::Value& loop, const ttr::CLoopList& list, const CLoopRange& range,
                       int container, int* right, int* bottom);
  Json::Value expandRotatingLoop(Json::Value& loop, Json::Value& list, const CLoopRange& range,
                                 int container);
  void appendLoopContents(Json::Value& copies, Json::Value* contents, int container, bool isLast);

  Json::Value m_document;
  const CTokenResolver* m_tokenResolver;
  CTemplateStack* m_stack;
  unsigned int m_includeDepth = 0;
  int m_screenHeight = 0;
  int m_screenWidth = 0;
  int m_containerId = 0;
  unsigned int m_processCount = 0;
  CPassFlag m_isOwnValue;  // what is resolved is not the host's, but a copy or an included file
  std::vector<CParsedText> m_parsedTexts;  // the least recently used first
};

#endif  // TOKENTEMPLATERESOLVER_TEMPLATE_RESOLVER_H
