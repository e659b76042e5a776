#ifndef TOOL_PREVIEW_WATCH_H
#define TOOL_PREVIEW_WATCH_H

#include "preview/preview.h"
#include "text/output_options.h"

namespace ttr {

/// How `ttr preview` goes on after the first picture.
struct CWatchOptions {
  bool serve = false;  ///< show the preview to browsers on this machine, too
  int port = 0;        ///< for that; 0 is any that is free
  COutputOptions output;
};

/// Makes the preview, and makes it anew whenever one of its files changes, until the program gets
/// SIGINT or SIGTERM. While the page is faulty, or a file that it includes cannot be read or is no
/// JSON, the last good pictures say that they are outdated.
/// Reports each time on standard error, and the address of the server on standard output.
/// \throws CToolError when it cannot begin: a file is missing, or an output cannot be written
void watchPreview(const CPreviewOptions& options, const CWatchOptions& watch);

}  // namespace ttr

#endif  // TOOL_PREVIEW_WATCH_H
