// The walk over a template: document, page, "Contents" arrays, element objects. Goes in: a
// document; comes out: the same document, every element resolved in place or replaced.
// Also numbers containers and marks the elements inside them.
// Test: tests/template/contents_walk_test.cpp
#include "TokenTemplateResolver/template_resolver.h"
#include "template/member.h"
#include "template/render_type.h"
#include "util/report.h"
#include "util/wrapping.h"

void CTemplateResolver::process(Json::Value& document) {
  if (Json::Value* page = ttr::findMember(document, "Page")) {
    processPageValue(*page);
  } else if (Json::Value* contents = ttr::findMember(document, "Contents")) {
    processContentsArray(*contents, 0);
  } else {
    ttr::report("CTemplateResolver::Process: render template must have Page or Contents member.");
  }
}

void CTemplateResolver::processPageValue(Json::Value& page) {
  // The page has no frame of its own: its context goes to the frame on top, the screen's.
  if (Json::Value* context = ttr::findMember(page, "Context")) {
    processContentsContextElement(*context);
  }
  if (Json::Value* contents = ttr::findMember(page, "Contents")) {
    processContentsArray(*contents, 0);
  } else {
    ttr::report("CTemplateResolver::processPageValue: Page must have Contents member.");
  }
}

void CTemplateResolver::processContentsArray(Json::Value& contents, int container) {
  if (!contents.isArray()) {
    ttr::report("CTemplateResolver::processContentsArray: Contents member must be an array.");
    return;
  }
  for (Json::Value& entry : contents) {
    processContentsValue(entry, container);
    lowercaseContentsValue(entry);
  }
}

void CTemplateResolver::processContentsValue(Json::Value& value, int container) {
  if (!value.isObject()) {
    if (value.isString()) processValue(value);
    return;
  }
  // Deliberately no scope guard: an exception leaves the frames for the host to look at, and the
  // next Input clears them.
  m_stack->Push(CTemplateStack::CStackFrame());
  processContentsObject(value, container);
  m_stack->Pop();
}

void CTemplateResolver::processContentsObject(Json::Value& element, int container) {
  if (!element.isObject()) {
    ttr::report("CTemplateResolver::processContentsObject: JSON value not an object.");
    return;
  }
  // Context and bounds come first, so that they are in force for what replaces the element.
  if (Json::Value* context = ttr::findMember(element, "Context")) {
    processContentsContextElement(*context);
  }
  if (Json::Value* bounds = ttr::findMember(element, "Bounds")) {
    processContentsBoundsElement(*bounds);
  }
  if (Json::Value* include = ttr::findMember(element, "Include")) {
    element = processContentsIncludeElement(*include);
  } else if (Json::Value* ifValue = ttr::findMember(element, "If")) {
    element = processContentsIfElement(*ifValue, container);
  } else if (Json::Value* loop = ttr::findMember(element, "Loop")) {
    element = processContentsLoopElement(*loop, container);
  } else {
    processPlainMembers(element, container);
  }
}

void CTemplateResolver::processPlainMembers(Json::Value& element, int container) {
  if (Json::Value* layout = ttr::findMember(element, "Layout")) processLayoutElement(*layout);
  if (Json::Value* display = ttr::findMember(element, "Display")) {
    processContentsDisplayElement(*display);
  }
  if (Json::Value* play = ttr::findMember(element, "Play")) processContentsPlayElement(*play);
  if (Json::Value* prec = ttr::findMember(element, "Prec")) processContentsPrecElement(*prec);
  int inner = container;
  if (Json::Value* renderType = ttr::findMember(element, "RenderType")) {
    processValue(*renderType);
    inner = processContainment(element, getElementType(*renderType), container);
  }
  if (Json::Value* contents = ttr::findMember(element, "Contents")) {
    processContentsArray(*contents, inner);
  }
}

CTemplateResolver::eElementType CTemplateResolver::getElementType(
    const Json::Value& renderType) const {
  // Compared as JSON values, where a number of another JSON type never equals: 1024.0 is plain.
  if (!renderType.isInt() || !(renderType > Json::Value(0))) return elementNone;
  return renderType == Json::Value(ttr::containerRenderType) ? elementContainer : elementPlain;
}

int CTemplateResolver::processContainment(Json::Value& element, eElementType type, int container) {
  switch (type) {
    case elementPlain:
      // Marked for an id above 0 only, while below any id but 0 counts as nested: deliberate.
      if (container > 0) element["Container"] = container;
      return container;
    case elementContainer: {
      if (container != 0) {
        ttr::report("CTemplateResolver::processContentsObject: Nested containers unsupported.");
        return container;
      }
      const int id = nextContainerID();
      element["Frame"]["Id"] = id;
      return id;
    }
    default:
      return container;
  }
}

int CTemplateResolver::nextContainerID() {
  m_containerId = ttr::wrapAdd(m_containerId, 1);
  return m_containerId;
}
