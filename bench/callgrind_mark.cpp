// The marks for callgrind, which writes one dump for each count, with the name in it.
#include <valgrind/callgrind.h>

#include "instruction_mark.h"

namespace bench {

void beginCount(const std::string& /*name*/) { CALLGRIND_START_INSTRUMENTATION; }

void endCount(const std::string& name) {
  CALLGRIND_STOP_INSTRUMENTATION;
  CALLGRIND_DUMP_STATS_AT(name.c_str());
}

}  // namespace bench
