// A host that listens: it writes each message behind the file, line and column that it is about.
#include <TokenTemplateResolver/included_file.h>
#include <TokenTemplateResolver/template_resolver.h>
#include <TokenTemplateResolver/trace.h>

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <string>
#include <vector>

struct CPlace {
  std::string file;
  std::size_t offset;
};
thread_local std::vector<CPlace> places;  // the page, then where each part begun stands

void ttr::trace(const ttr::CTraceEvent& event) {
  const CPlace around = places.back();
  if (event.event == ttr::traceBegin) {
    places.push_back(around);
    CPlace& place = places.back();
    if (event.part == ttr::tracedDocument && !event.name.empty())
      place = {std::string(event.name), 0};
    const bool stands = event.value != nullptr && event.value->getOffsetLimit() > 0;
    if (stands) place.offset = static_cast<std::size_t>(event.value->getOffsetStart());
  } else if (event.event == ttr::traceEnd) {
    places.pop_back();
  } else if (event.event == ttr::traceMessage) {
    std::string before = ttr::readIncludedFile(around.file);
    if (before.compare(0, 3, "\xEF\xBB\xBF") == 0) before.erase(0, 3);
    before.resize(around.offset);
    std::cerr << around.file << ':' << 1 + std::count(before.begin(), before.end(), '\n') << ':'
              << before.size() - before.rfind('\n') << ": ";  // the library goes on in this line
  }
}

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: tracing_host PAGE.json" << std::endl;
    return 2;
  }
  const CTokenResolver tokens;
  CTemplateStack stack;
  CTemplateResolver resolver(&tokens, &stack);
  resolver.SetScreenSize(720, 1280);  // height, width
  places = {{argv[1], 0}};            // anew for each page, as an exception leaves parts behind
  resolver.Input(ttr::readIncludedFile(argv[1]));
  resolver.Process();
  std::cout << resolver.Output() << std::endl;
}
