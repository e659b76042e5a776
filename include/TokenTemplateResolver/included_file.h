#ifndef TOKENTEMPLATERESOLVER_INCLUDED_FILE_H
#define TOKENTEMPLATERESOLVER_INCLUDED_FILE_H

#include <string>

#include "TokenTemplateResolver/export.h"

namespace ttr {

/// The whole text of the template file `name`, which an "Include" asks for; empty when there is
/// none to be had. `name` is the "Filename" with its tokens replaced, otherwise as the template has
/// it.
///
/// The library's own reads any file that the process can read; relative names start from the
/// working directory. This is the only place where the library opens files.
///
/// A program may replace it, as it may replace operator new: it defines a function of its own with
/// this declaration, and the library calls that one, in the whole program. So a host confines
/// what templates can read, or keeps its templates elsewhere than in files. What it throws leaves
/// `Process`.
TTR_EXPORT std::string readIncludedFile(const std::string& name);

}  // namespace ttr

#endif  // TOKENTEMPLATERESOLVER_INCLUDED_FILE_H
