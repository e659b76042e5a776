// "Display", "Prec", "Play" and "Context": colours, integers, plain values and the context that
// children can refer to. Goes in: the member; comes out: the same, resolved in place.
#include "TokenTemplateResolver/template_resolver.h"
#include "util/report.h"
#include "util/trace_point.h"

namespace {

/// [0, 0, 0], for an empty "Display" or "Prec".
Json::Value threeZeros() {
  Json::Value zeros(Json::arrayValue);
  for (int i = 0; i < 3; ++i) zeros.append(0);
  return zeros;
}

/// [0, 0, 0, false], for an empty "Play".
Json::Value threeZerosAndFalse() {
  Json::Value values = threeZeros();
  values.append(false);
  return values;
}

}  // namespace

// JsonCpp's size() is 0 for scalars too, so that a single colour outside an array gives way to the
// default like an empty array does: deliberate, and the same for the three members.

void CTemplateResolver::processContentsDisplayElement(Json::Value& display) {
  ttr::traceMemberBegin("Display", display);
  static const Json::Value defaultDisplay = threeZeros();
  if (display.size() == 0) {
    display = defaultDisplay;
  } else {
    processArrayColour(display);
  }
  ttr::traceMemberEnd(display);
}

void CTemplateResolver::processArrayColour(Json::Value& colours) const {
  if (!colours.isArray()) {
    ttr::report("CTemplateResolver::processArrayColour: element must be an array.");
    return;
  }
  for (Json::Value& colour : colours) {
    ttr::traceEntryBegin(colour);
    processValue(colour);
    CTokenResolver::CoerceToColour(colour);
    ttr::traceEntryEnd(colour);
  }
}

void CTemplateResolver::processContentsPrecElement(Json::Value& prec) {
  ttr::traceMemberBegin("Prec", prec);
  static const Json::Value defaultPrec = threeZeros();
  if (prec.size() == 0) {
    prec = defaultPrec;
  } else {
    processArrayInteger(prec);
  }
  ttr::traceMemberEnd(prec);
}

void CTemplateResolver::processArrayInteger(Json::Value& integers) const {
  if (!integers.isArray()) {
    ttr::report("CTemplateResolver::processArrayInteger: element must be an array.");
    return;
  }
  for (Json::Value& integer : integers) {
    ttr::traceEntryBegin(integer);
    processValue(integer);
    CTokenResolver::CoerceToInt(integer);
    ttr::traceEntryEnd(integer);
  }
}

void CTemplateResolver::processContentsPlayElement(Json::Value& play) {
  ttr::traceMemberBegin("Play", play);
  static const Json::Value defaultPlay = threeZerosAndFalse();
  if (play.size() == 0) {
    play = defaultPlay;
  } else {
    processList(play);
  }
  ttr::traceMemberEnd(play);
}

void CTemplateResolver::processContentsContextElement(Json::Value& context) {
  ttr::traceMemberBegin("Context", context);
  processList(context);
  m_stack->ContextSet(context);
  ttr::traceMemberEnd(context);
}
