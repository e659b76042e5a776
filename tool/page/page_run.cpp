#include "page/page_run.h"

#include <json/writer.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <iterator>
#include <limits>
#include <utility>

#include "TokenTemplateResolver/json_text.h"
#include "page/included_files.h"
#include "page/message_recorder.h"
#include "page/record_builder.h"
#include "page/record_results.h"
#include "text/printable.h"
#include "tool_error.h"

namespace ttr {
namespace {

/// The JSON text of `document`, with the bytes of its strings as they are in the file: the library
/// must come upon the same ones, whether they are UTF-8 or not.
std::string textOf(const Json::Value& document) {
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "";
  writer["emitUTF8"] = true;
  return Json::writeString(writer, document);
}

/// The smallest distance at which `texts` repeat themselves throughout; their number without one.
unsigned period(const std::vector<std::string>& texts) {
  const std::size_t count = texts.size();
  for (std::size_t distance = 1; distance <= count / 2; ++distance) {
    const auto shifted = texts.begin() + static_cast<std::ptrdiff_t>(distance);
    if (std::equal(shifted, texts.end(), texts.begin())) return static_cast<unsigned>(distance);
  }
  return static_cast<unsigned>(count);
}

/// The path of the included file `name`, as the user of the tool, not the page, would name it.
std::string userPath(const CPageOptions& options, const std::string& name) {
  const std::filesystem::path path = std::filesystem::path(options.directory) / name;
  return path.empty() ? name : path.lexically_normal().string();
}

/// The value that an exception leaves with: the part that the library was working on, or all that
/// the part decides about. Null as an entry, or absent as a member, it does not end the pass again.
CTemplateValue culpritOf(const CMessageFact& end) {
  const CTemplateValue& object = end.object;
  if (end.isDocument && end.pointer.steps().size() < 2 && !end.way.empty() &&
      (end.pointer.empty() || end.pointer.steps().back() == "Page")) {
    return end.way.back().element;
  }
  const bool isOwn = !end.isDocument && end.pointer.Parent() == object.pointer;
  const std::string member = isOwn ? end.pointer.steps().back() : "";
  const bool decides = member == "Include" || member == "If" || member == "Loop";
  return {object.file, decides ? object.pointer : end.pointer, nullptr};
}

bool isSamePlace(const CTemplateValue& a, const CTemplateValue& b) {
  return a.file == b.file && a.pointer == b.pointer;
}

bool isSame(const CMessageFact& a, const CMessageFact& b) {
  const auto isSameStep = [](const CIncludeStep& left, const CIncludeStep& right) {
    return left.file == right.file && isSamePlace(left.element, right.element);
  };
  return a.text == b.text && isSamePlace(a.object, b.object) && a.pointer == b.pointer &&
         std::equal(a.way.begin(), a.way.end(), b.way.begin(), b.way.end(), isSameStep);
}

/// True for a message about the object that the cause of `end` was taken out of, and about a part
/// that the cause lay in.
bool isOfGap(const CMessageFact& message, const CMessageFact& end) {
  return isSamePlace(message.object, end.object) && culpritOf(end).pointer.IsBelow(message.pointer);
}

/// Adds to `next`, the pass made again without what ended `before`, what only the pass before knew:
/// its ends, and the messages of what was taken out. What the gap itself makes the library say is
/// set aside.
void follow(CPassRecord before, CPassRecord& next) {
  const auto [mine, its] = std::mismatch(before.messages.begin(), before.messages.end(),
                                         next.messages.begin(), next.messages.end(), isSame);
  const auto common = static_cast<std::size_t>(mine - before.messages.begin());
  for (std::size_t i = 0; i < next.messages.size(); ++i) {
    CMessageFact& message = next.messages[i];
    message.isAside = i < common ? before.messages[i].isAside
                                 : std::any_of(before.ends.begin(), before.ends.end(),
                                               [&message](const CPassEnd& end) {
                                                 return isOfGap(message, end.exception);
                                               });
  }
  next.lostMessages = std::move(before.lostMessages);
  next.lostMessages.insert(next.lostMessages.end(), std::make_move_iterator(mine),
                           std::make_move_iterator(before.messages.end()));
  next.ends.insert(next.ends.begin(), std::make_move_iterator(before.ends.begin()),
                   std::make_move_iterator(before.ends.end()));
}

}  // namespace

/// An included file, read once.
struct CPageRunner::CFile {
  CSourceFile source;
  std::string reason;  ///< why it could not be read
};

CPageRunner::CPageRunner(const CPageOptions& options)
    : m_options(options),
      m_page(options.page, readPage(options)),
      m_values(readValues(valuesFile(options))),
      m_size(parseScreenSize(options.size)) {
  if (options.root) confineIncludes(*options.root);
  m_directory = std::make_unique<CWorkingDirectory>(options.directory);
  const CIncludeReader reader([this](const std::string& name) { return file(name).source.text(); });
  const CMessageRecorder silence;  // each pass says what is wrong with the names of files
  CPageHost host(m_values, m_size);
  m_variables = pageVariables(m_page.document(), host.tokens());
  host.ServeVariables(m_variables);
  for (const auto& [name, handler] : host.tokens().handlers()) m_tokenNames.push_back(name);
}

CPageRunner::~CPageRunner() = default;

CPageRunner::CFile& CPageRunner::file(const std::string& name) {
  const auto found = m_files.find(name);
  if (found != m_files.end()) return *found->second;
  std::string text;
  std::string reason;
  try {
    text = readRegularFile(name);
  } catch (const CToolError& error) {
    reason = error.reason();
  }
  CSourceFile source(userPath(m_options, name), std::move(text));
  auto file = std::make_unique<CFile>(CFile{std::move(source), reason});
  return *m_files.emplace(name, std::move(file)).first->second;
}

const CSourceFile* CPageRunner::IncludedFile(const std::string& name) {
  const CFile& included = file(name);
  return included.reason.empty() ? &included.source : nullptr;
}

const CSourceFile* CPageRunner::File(const std::string& name) {
  return name == pageKey ? &m_page : IncludedFile(name);
}

std::string CPageRunner::ReasonNotIncluded(const std::string& name) { return file(name).reason; }

std::vector<std::string> CPageRunner::includedFiles() const {
  std::vector<std::string> names;
  for (const auto& [name, file] : m_files) names.push_back(name);
  return names;
}

std::vector<const CSourceFile*> CPageRunner::sources() {
  std::vector<const CSourceFile*> files = {&m_page};
  for (const auto& [name, file] : m_files) {
    if (file->reason.empty()) files.push_back(&file->source);
  }
  return files;
}

std::optional<CPlace> CPageRunner::PlaceOfVariable(const std::string& name) {
  for (const CSourceFile* file : sources()) {
    auto known = m_boundNames.find(file);
    if (known == m_boundNames.end()) {
      known = m_boundNames.emplace(file, boundNames(file->document())).first;
    }
    const auto bound = known->second.find(name);
    if (bound != known->second.end()) return file->PlaceOfName(bound->second);
  }
  return std::nullopt;
}

std::unique_ptr<CPageHost> CPageRunner::newHost() const {
  auto host = std::make_unique<CPageHost>(m_values, m_size);
  host->ServeVariables(m_variables);
  return host;
}

void CPageRunner::SetSize(CScreenSize size) {
  m_size = size;
  m_host.reset();
}

/// The host that comes to `pass` next. Only the number of passes so far is left of those before.
CPageHost& CPageRunner::hostBefore(unsigned pass) {
  if (m_host == nullptr || pass <= m_passes) {
    m_host = newHost();
    m_passes = 0;
  }
  m_host->SkipPasses(pass - 1 - m_passes);
  m_passes = pass - 1;
  return *m_host;
}

/// Lets the host that comes to `pass` next `work`, and gives what is written meanwhile.
CPageRunner::COutput CPageRunner::run(unsigned pass, const std::function<void(CPageHost&)>& work) {
  COutput output;
  CPageHost& host = hostBefore(pass);
  CMessageRecorder recorder;
  try {
    work(host);
    m_passes = pass;
  } catch (const std::exception& error) {
    output.exception = error.what();
    // The host is kept for a look at its stack, but comes to no pass any more.
    m_passes = std::numeric_limits<unsigned>::max();
  }
  output.lines = recorder.Take();
  return output;
}

CPageRunner::COutput CPageRunner::Output(unsigned pass) {
  const CIncludeReader reader([this](const std::string& name) {
    const CFile& included = file(name);
    if (!included.reason.empty())
      tell(std::string("not included: ") + CToolError(name, included.reason).what());
    return included.source.text();
  });
  std::string text;
  COutput output = run(pass, [&](CPageHost& host) { text = host.Pass(m_page.text()); });
  output.text = std::move(text);
  return output;
}

const CSourceFile* CPageRunner::served(const std::string& name, const CChanges& changes) {
  const auto change = changes.find(name);
  return change == changes.end() ? File(name) : &change->second;
}

CPassRecord CPageRunner::record(unsigned pass, const CChanges& changes) {
  const CIncludeReader reader([&](const std::string& name) {
    const CSourceFile* source = served(name, changes);
    return source == nullptr ? "" : source->TextWithoutComments();
  });
  const std::string text = served(pageKey, changes)->TextWithoutComments();
  std::optional<CRecordBuilder> builder;
  const COutput output = run(pass, [&](CPageHost& host) {
    builder.emplace(host, pageKey, [&](const std::string& name) { return served(name, changes); });
    host.Resolve(text);
  });
  CPassRecord record = builder->Take(output.exception);
  record.pass = pass;
  return record;
}

/// Takes what ended a pass out of the text of its file. False when nothing would be left.
bool CPageRunner::takeOut(const CMessageFact& end, CChanges& changes) {
  const CTemplateValue culprit = culpritOf(end);
  const CSourceFile* source = served(culprit.file, changes);
  if (source == nullptr || culprit.pointer.Find(source->document()) == nullptr) return false;
  Json::Value document = source->document();
  Json::Value* holder = culprit.pointer.Parent().Find(document);
  const bool isPage = culprit.pointer == CJsonPointer() / "Page";
  if (culprit.pointer.empty() || isPage) return false;
  if (holder->isObject()) {
    holder->removeMember(culprit.pointer.steps().back());
  } else {
    *culprit.pointer.Find(document) = Json::Value();
  }
  changes.insert_or_assign(culprit.file, CSourceFile(source->name(), textOf(document)));
  return true;
}

CPassRecord CPageRunner::Record(unsigned pass) {
  CChanges changes;
  CPassRecord record = this->record(pass, changes);
  bool isOver = record.ends.empty();
  while (!isOver && takeOut(record.ends.back().exception, changes)) {
    const std::size_t known = record.ends.size();
    CPassRecord next = this->record(pass, changes);
    follow(std::move(record), next);
    record = std::move(next);
    isOver = record.ends.size() == known;
  }
  record.isRepaired = isOver && !record.ends.empty();
  findResults(record, [this](const std::string& name) { return File(name); });
  return record;
}

unsigned CPageRunner::PassesUntilRepeat(unsigned limit) {
  std::vector<std::string> texts;
  for (unsigned count = std::min(limit, 60U);; count = std::min(limit, 2 * count)) {
    while (texts.size() < count) {
      const auto pass = static_cast<unsigned>(texts.size() + 1);
      const CPassRecord record = Record(pass);
      // Nothing else than a rotating loop tells one pass from the next.
      if (pass == 1 && !record.rotates) return 1;
      texts.push_back(jsoncpp_string::toString(*record.result));
    }
    if (period(texts) < count || count == limit) return period(texts);
  }
}

}  // namespace ttr
