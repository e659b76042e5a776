#include "check/fault_search.h"

#include <algorithm>
#include <utility>

#include "check/fault_codes.h"
#include "check/suggestions.h"
#include "text/printable.h"

namespace ttr {
namespace {

/// Marks the stand-in of an Include, which resolves the name of the file but does not read it.
constexpr char probeMember[] = "ttr:probe";

/// Resolves what the Include `element` resolves by itself: context, bounds and the name of the
/// file, which goes to the first entry of "Play".
Json::Value probeOf(const Json::Value& element) {
  Json::Value probe(Json::objectValue);
  for (const char* member : {"Context", "Bounds"}) {
    if (element.isMember(member)) probe[member] = element[member];
  }
  probe["Play"].append(element["Include"]["Filename"]);
  probe[probeMember] = true;
  return probe;
}

/// The Include that `probe` stands for, with what was taken out of the probe.
Json::Value includeOf(Json::Value probe, const Json::Value& element) {
  probe["Include"] = element["Include"];
  probe["Include"]["Filename"] = probe["Play"][0U];
  probe.removeMember("Play");
  probe.removeMember(probeMember);
  return probe;
}

void collectProbes(const Json::Value& value, std::map<std::string, std::size_t>& names) {
  if (value.isObject() && value.isMember(probeMember)) {
    const Json::Value& name = value["Play"][0U];
    if (name.isString()) ++names[name.asString()];
  } else if (value.isObject() || value.isArray()) {
    for (const Json::Value& entry : value) collectProbes(entry, names);
  }
}

/// An included document that shows nothing.
Json::Value emptyDocument() {
  Json::Value document;
  document["Contents"] = Json::Value(Json::arrayValue);
  return document;
}

bool isCode(const std::string& message, const std::string& code) {
  return kindOfMessage(message).code == code;
}

/// Where in the string at `pointer`, `text`, stands what `message` is about: the token, or the
/// words that it repeats.
CPlace placeInText(const CSourceFile& source, const CJsonPointer& pointer, const std::string& text,
                   const std::string& message) {
  if (isCode(message, "unclosed-token")) {
    return source.PlaceOfLastPart(pointer, text.substr(std::min(text.rfind("$("), text.size())));
  }
  const bool token = message.find("GetTokenValue") != std::string::npos;
  const std::string quoted = quotedText(message);
  return source.PlaceOfPart(pointer, token ? "$(" + quoted + ')' : quoted);
}

CTemplatePlace filenameOf(const CTemplatePlace& element) {
  return {element.file, element.pointer / "Include" / "Filename"};
}

/// True when an element without this part is of another kind.
bool decidesKind(const CJsonPointer& part, const CJsonPointer& object) {
  if (part == object) return true;
  const std::string& member = part.steps().back();
  return part.Parent() == object &&
         (member == "Page" || member == "Include" || member == "If" || member == "Loop");
}

}  // namespace

std::vector<CFault> syntaxFaults(const CSourceFile& source) {
  std::vector<CFault> faults;
  for (const CSourceFile::CSyntaxError& error : source.errors()) {
    CFault fault;
    fault.code = "json-syntax";
    fault.level = faultKind(fault.code).level;
    fault.message = error.reason;
    fault.place = error.place;
    faults.push_back(fault);
  }
  return faults;
}

void CFaultSearch::Search() {
  const CRunMessages whole(m_reduced.Run());
  if (whole.empty() || !m_page.pageFile().errors().empty()) return;
  searchDocument(m_page.pageFile().name(), {});
  addWhatIsLeft(whole);
}

void CFaultSearch::searchDocument(const std::string& file, const CRunMessages& before) {
  const Json::Value& document = original({file, {}});
  m_reduced.SetDocument(file, withoutEntries(document, partDocument));
  searchObject({file, {}}, partDocument, before);
}

void CFaultSearch::searchElement(const CTemplatePlace& element, const CRunMessages& before) {
  const Json::Value& value = original(element);
  const bool includes =
      value.isMember("Include") && (value["Include"].isObject() || value["Include"].isNull());
  if (includes) {
    searchInclude(element, before);
  } else {
    m_reduced.At(element) = withoutEntries(value, partElement);
    searchObject(element, partElement, before);
  }
}

/// An object that stands in the reduced page without its entries.
void CFaultSearch::searchObject(const CTemplatePlace& object, eTemplatePart part,
                                const CRunMessages& before) {
  if (!blameObject(object, part, before)) return;
  const std::optional<CJsonPointer> way = wayToContents(m_reduced.At(object), part);
  const Json::Value* contents = way ? way->Find(m_reduced.At(object)) : nullptr;
  if (contents == nullptr || !contents->isArray()) return;
  CTemplatePlace place = object;
  for (const std::string& step : way->steps()) place.pointer = std::move(place.pointer) / step;
  searchEntries(place, 0, contents->size(), CRunMessages(m_reduced.Run()));
}

/// The entries from `first` to before `last`: all at once, and by halves when they write something.
void CFaultSearch::searchEntries(const CTemplatePlace& contents, Json::ArrayIndex first,
                                 Json::ArrayIndex last, const CRunMessages& before) {
  if (first == last) return;
  const auto entry = [&](Json::ArrayIndex index) {
    return CTemplatePlace{contents.file, contents.pointer / static_cast<std::size_t>(index)};
  };
  for (Json::ArrayIndex i = first; i < last; ++i) m_reduced.At(entry(i)) = original(entry(i));
  const CRunMessages messages = CRunMessages(m_reduced.Run()) - before;
  if (last - first == 1 && !messages.empty()) {
    if (original(entry(first)).isObject()) {
      searchElement(entry(first), before);
    } else {
      addAll(entry(first), messages);
    }
  }
  for (Json::ArrayIndex i = first; i < last; ++i) m_reduced.At(entry(i)) = Json::Value();
  if (last - first == 1 || messages.empty()) return;
  if (placeTokens(contents, first, last, messages)) return;
  const Json::ArrayIndex middle = first + (last - first) / 2;
  searchEntries(contents, first, middle, before);
  searchEntries(contents, middle, last, before);
}

/// Finds the entries of unknown tokens without further runs, when all messages are about tokens
/// that one text each has. False when there are others; then nothing was added.
bool CFaultSearch::placeTokens(const CTemplatePlace& contents, Json::ArrayIndex first,
                               Json::ArrayIndex last, const CRunMessages& messages) {
  if (messages.exception) return false;
  const Json::Value& entries = original(contents);
  std::map<std::string, std::size_t> found;
  for (const auto& [message, count] : messages.counts) {
    if (message.find("GetTokenValue") == std::string::npos) return false;
    const std::string token = "$(" + quotedText(message) + ')';
    std::size_t texts = 0;
    for (Json::ArrayIndex i = first; i < last; ++i) {
      if (!entries[i].isString()) return false;
      if (entries[i].asString().find(token) == std::string::npos) continue;
      found[message] = i;
      ++texts;
    }
    if (texts != 1) return false;
  }
  for (const auto& [message, index] : found) {
    add({contents.file, contents.pointer / index}, message, messages.Count(message));
  }
  return true;
}

/// Finds the parts of an object that its own messages are about. False when what is inside of it
/// cannot be looked at.
bool CFaultSearch::blameObject(const CTemplatePlace& object, eTemplatePart part,
                               const CRunMessages& before) {
  CRunMessages run(m_reduced.Run());
  std::vector<CJsonPointer> repairs;
  if (run.exception && !repairObject(object, part, run, before, repairs)) return false;
  CMemberBlame blame(m_reduced, object, part);
  for (const CBlame& found : blame.PartsOf(run - before, run)) {
    const bool byRepair =
        std::any_of(repairs.begin(), repairs.end(),
                    [&found](const CJsonPointer& repair) { return repair.IsBelow(found.pointer); });
    if (!byRepair) add({object.file, found.pointer}, found.message, found.count);
  }
  return true;
}

/// Takes out what ends the run in exceptions, one by one, so that the search can go on behind them.
bool CFaultSearch::repairObject(const CTemplatePlace& object, eTemplatePart part, CRunMessages& run,
                                const CRunMessages& before, std::vector<CJsonPointer>& repairs) {
  while (run.exception) {
    const CTemplatePlace cause{object.file,
                               CMemberBlame(m_reduced, object, part).CauseOf(*run.exception)};
    addException(cause, *run.exception);
    run.exception.reset();
    if (decidesKind(cause.pointer, object.pointer)) {
      addAll(cause, run - before);
      return false;
    }
    takeOut(m_reduced.Document(object.file), cause.pointer);
    repairs.push_back(cause.pointer);
    const CRunMessages repaired(m_reduced.Run());
    addAll(cause, (run - before) - repaired);
    run = repaired;
  }
  return true;
}

/// The element itself is looked at in the form of its probe, which reads no file.
void CFaultSearch::searchInclude(const CTemplatePlace& element, const CRunMessages& before) {
  m_reduced.At(element) = probeOf(original(element));
  m_probe = element;
  const bool whole = blameObject(element, partElement, before);
  m_probe.reset();
  const bool unnamed = m_reduced.At(element)["Play"][0U].isNull();  // taken out: told by now
  if (!whole || (unnamed && original(element)["Include"].isMember("Filename"))) return;
  const CPageRun probed = m_reduced.Run();
  const CRunMessages probe(probed);
  std::map<std::string, std::size_t> names;
  collectProbes(probed.result, names);
  m_reduced.At(element) = includeOf(m_reduced.At(element), original(element));
  for (const auto& [name, count] : names) {
    if (isOnWay(name)) return addCycle(name, element, probe);
  }
  for (const auto& [name, count] : names) m_reduced.SetDocument(name, emptyDocument());
  const CRunMessages run(m_reduced.Run());
  if (blameInclude(element, run - probe)) {
    for (const auto& [name, count] : names) {
      if (m_page.IncludedFile(name) == nullptr) {
        addNotIncluded(name, count, element);
        continue;
      }
      m_way.push_back({element, name});
      searchIncludedFile(name, count, run);
      m_way.pop_back();
    }
  }
  for (const auto& [name, count] : names) m_reduced.Restore(name);
}

bool CFaultSearch::isOnWay(const std::string& file) const {
  return file == m_page.pageFile().name() ||
         std::any_of(m_way.begin(), m_way.end(),
                     [&file](const CWayStep& step) { return step.file == file; });
}

/// A file that is on the way to its own Include. This is a fault when nothing but the limit of the
/// library ends it.
void CFaultSearch::addCycle(const std::string& file, const CTemplatePlace& element,
                            const CRunMessages& probe) {
  m_recursion = filenameOf(element);
  bool endless = false;
  for (const auto& [message, count] : (CRunMessages(m_reduced.Run()) - probe).counts) {
    if (!isCode(message, "include-depth")) continue;
    m_placed.Add(message, count);
    endless = true;
  }
  if (!endless) return;
  CFault fault = faultAt(filenameOf(element), "include-cycle");
  fault.message = "include cycle: " + file;
  bool inside = file == m_page.pageFile().name();
  for (const CWayStep& step : m_way) {
    if (inside) fault.message += " -> " + step.file;
    inside = inside || step.file == file;
  }
  fault.message = oneLine(fault.message + " -> " + file);
  m_faults.Add(fault);
}

/// The messages of an Include with all of its files empty. False when it includes none.
bool CFaultSearch::blameInclude(const CTemplatePlace& element, const CRunMessages& own) {
  bool includes = true;
  for (const auto& [message, count] : own.counts) {
    const bool tooDeep = isCode(message, "include-depth");
    if (tooDeep || isCode(message, "include-without-file")) {
      const bool named = original(element)["Include"].isMember("Filename");
      const CTemplatePlace include{element.file, element.pointer / "Include"};
      add(named ? filenameOf(element) : include, message, count);
    } else {
      m_placed.Add(message, count);  // about a file that cannot be emptied: told there
    }
    includes = includes && !tooDeep;
  }
  return includes;
}

void CFaultSearch::addNotIncluded(const std::string& file, std::size_t count,
                                  const CTemplatePlace& element) {
  CFault fault = faultAt(filenameOf(element), "not-included");
  fault.message = "not included: " + oneLine(file + ": " + m_page.ReasonNotIncluded(file));
  fault.count = count;
  m_faults.Add(fault);
}

/// A file on the way, which is empty in the reduced page if it can be.
void CFaultSearch::searchIncludedFile(const std::string& file, std::size_t count,
                                      const CRunMessages& before) {
  const CSourceFile& source = *m_page.IncludedFile(file);
  m_faults.AddFile(source.name());
  if (!source.errors().empty()) return addSyntaxErrors(source, count);
  m_reduced.Restore(file);
  const CRunMessages messages = CRunMessages(m_reduced.Run()) - before;
  if (!source.document().isObject()) {
    addAll({file, {}}, messages);
  } else if (!messages.empty()) {
    searchDocument(file, before);
  }
  m_reduced.SetDocument(file, emptyDocument());
}

void CFaultSearch::addSyntaxErrors(const CSourceFile& source, std::size_t count) {
  for (CFault& fault : syntaxFaults(source)) {
    fault.count = count;
    fault.includedFrom = waysHere();
    m_faults.Add(fault);
  }
}

void CFaultSearch::addAll(const CTemplatePlace& place, const CRunMessages& messages) {
  for (const auto& [message, count] : messages.counts) add(place, message, count);
  if (messages.exception) addException(place, *messages.exception);
}

void CFaultSearch::add(const CTemplatePlace& place, const std::string& message, std::size_t count) {
  m_placed.Add(message, count);
  CFault fault = faultAt(inTemplate(place), kindOfMessage(message).code);
  fault.message = oneLine(message);
  fault.count = count;
  fault.suggestion = tokenSuggestion(message, m_page.TokenNames());
  const Json::Value* text = fault.pointer.Find(m_page.File(place.file)->document());
  if (text != nullptr && text->isString()) {
    fault.place = placeInText(*m_page.File(place.file), fault.pointer, text->asString(), message);
  }
  m_faults.Add(fault);
}

void CFaultSearch::addException(const CTemplatePlace& place, const std::string& text) {
  m_exceptionPlaced = true;
  CFault fault = faultAt(inTemplate(place), kindOfException(text).code);
  fault.message = oneLine(text);
  m_faults.Add(fault);
}

/// Messages of a recursion, which the search does not follow, count where they were found first. No
/// message is kept back: without any such place they stand at the recursion, or at the page.
void CFaultSearch::addWhatIsLeft(const CRunMessages& whole) {
  const CTemplatePlace place = m_recursion.value_or(CTemplatePlace{m_page.pageFile().name(), {}});
  for (const auto& [message, count] : (whole - CRunMessages(m_placed)).counts) {
    if (!m_faults.Count(oneLine(message), count)) add(place, message, count);
  }
  if (whole.exception && !m_exceptionPlaced) addException(place, *whole.exception);
}

/// The place in the template, for one in the probe of an Include too.
CTemplatePlace CFaultSearch::inTemplate(const CTemplatePlace& place) const {
  const bool probe = m_probe && place.pointer.IsBelow(m_probe->pointer / "Play");
  return probe ? filenameOf(*m_probe) : place;
}

CFault CFaultSearch::faultAt(const CTemplatePlace& place, const char* code) const {
  CFault fault;
  fault.code = code;
  fault.level = faultKind(code).level;
  fault.pointer = place.pointer;
  fault.place = m_page.File(place.file)->PlaceOf(place.pointer);
  fault.includedFrom = waysHere();
  return fault;
}

std::vector<CPlace> CFaultSearch::waysHere() const {
  std::vector<CPlace> places;
  for (auto step = m_way.rbegin(); step != m_way.rend(); ++step) {
    const CTemplatePlace include = filenameOf(step->element);
    places.push_back(m_page.File(include.file)->PlaceOf(include.pointer));
  }
  return places;
}

const Json::Value& CFaultSearch::original(const CTemplatePlace& place) const {
  return *place.pointer.Find(m_page.File(place.file)->document());
}

}  // namespace ttr
