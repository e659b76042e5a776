#ifndef TOOL_PAGE_MESSAGE_PLACE_H
#define TOOL_PAGE_MESSAGE_PLACE_H

#include "page/page_run.h"
#include "page/pass_record.h"

namespace ttr {

/// The part of a template that `message` is about, in the file of its object: the text that it
/// quotes, or the member that its kind names. `node` is the object of the message, null when it has
/// been taken out.
CJsonPointer placeOfMessage(CPageRunner& page, const CMessageFact& message,
                            const CElementNode* node);

/// Where in the string at `place` in `source` stands what `message` is about: the token, or the
/// words that it repeats.
CPlace placeInText(const CSourceFile& source, const CTemplateValue& place,
                   const CMessageFact& message);

}  // namespace ttr

#endif  // TOOL_PAGE_MESSAGE_PLACE_H
