#ifndef TOOL_PAGE_RECORD_BUILDER_H
#define TOOL_PAGE_RECORD_BUILDER_H

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "page/page_host.h"
#include "page/pass_record.h"
#include "page/record_results.h"
#include "page/source_file.h"
#include "page/trace_listener.h"

namespace ttr {

/// Makes the record of one pass from what the library says of it.
class CRecordBuilder : public CTraceListener {
 public:
  /// `host` is borrowed; `page` is the name of the page among the sources, which are the files as
  /// the library is given them in this pass.
  CRecordBuilder(const CPageHost& host, std::string page, CSources sources);

  void Tell(const CTraceEvent& event) override;

  /// The record, with everything but the text, the lines and the results. `exception` ended the
  /// pass, if it has one.
  CPassRecord Take(const std::optional<std::string>& exception);

 private:
  /// A part that has begun.
  struct COpenPart {
    eTracePart part = tracedDocument;
    std::string name;                      ///< of a member
    std::size_t index = 0;                 ///< of an entry
    const Json::Value* written = nullptr;  ///< null when it stands in no template
    std::size_t entries = 0;               ///< of "Contents" and of a copy: begun so far
  };

  /// An element or document that has begun, with the place of its part among those open.
  struct COpenNode {
    CElementNode node;
    std::size_t part = 0;
  };

  /// What put a frame's context in force.
  struct CFrameBindings {
    CTemplateValue context;                         ///< of a "Context"
    std::map<std::string, CBindingFact> variables;  ///< of a loop
  };

  void begin(const CTraceEvent& event);
  void beginDocument(const std::string& file);
  void beginElement(const CTraceEvent& event);
  void beginMember(const std::string& name);
  void beginEntry(const Json::Value& value);
  void beginCopy(const CTraceEvent& event);
  void beginToken(const std::string& body);
  void end(const CTraceEvent& event);
  void endMember(const COpenPart& member, const Json::Value& value);
  void endToken(const CTraceEvent& event);
  void endNode();
  void addVariable(const CTraceEvent& event);
  void addMessage(const std::string& text);
  void measure(const CTraceEvent& event);
  void decide(const CTraceEvent& event);
  void bindContext(const COpenPart& member);

  CElementNode& node() { return m_nodes.back().node; }
  bool isMemberOf(const char* name) const;
  bool isBounds(std::size_t index) const;
  std::optional<CBindingFact> bindingOf(const CTokenFact& token) const;
  CJsonPointer stepsInNode() const;
  CMessageFact messageFact(const std::string& text) const;

  const CPageHost& m_host;
  std::string m_page;
  CSources m_sources;
  CPassRecord m_record;
  std::vector<COpenPart> m_parts;
  std::vector<COpenNode> m_nodes;
  std::vector<CIncludeStep> m_way;
  std::size_t m_messagesBefore = 0;                  ///< before the walk: those of the page's text
  std::vector<std::size_t> m_tokens;                 ///< those that have begun, among the node's
  std::map<std::size_t, CFrameBindings> m_bindings;  ///< by the frame's place on the stack
};

}  // namespace ttr

#endif  // TOOL_PAGE_RECORD_BUILDER_H
