// The walk over a template: document, page, "Contents" arrays, element objects. Goes in: a
// document; comes out: the same document, every element resolved in place or replaced.
// Also numbers containers and marks the elements inside them.
#include <utility>
#include <vector>

#include "TokenTemplateResolver/template_resolver.h"
#include "template/bounds_array.h"
#include "template/element_members.h"
#include "template/member.h"
#include "template/render_type.h"
#include "util/report.h"
#include "util/trace_point.h"
#include "util/wrapping.h"

void CTemplateResolver::process(Json::Value& document) {
  if (Json::Value* page = ttr::findMember(document, "Page")) {
    ttr::traceMemberBegin("Page", *page);
    processPageValue(*page);
    ttr::traceMemberEnd(*page);
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
  ttr::traceMemberBegin("Contents", contents);
  if (contents.isArray()) {
    for (Json::Value& entry : contents) {
      processContentsValue(entry, container);
      lowercaseContentsValue(entry);
    }
  } else {
    ttr::report("CTemplateResolver::processContentsArray: Contents member must be an array.");
  }
  ttr::traceMemberEnd(contents);
}

void CTemplateResolver::processContentsValue(Json::Value& value, int container) {
  ttr::traceElementBegin(value, *m_stack);
  if (value.isObject()) {
    // Deliberately no scope guard: an exception leaves the frames for the host to look at, and the
    // next Input clears them.
    m_stack->PushFresh();
    if (m_isOwnValue.isRaised && !ttr::isTraced()) {
      processOwnElement(value, container);
    } else {
      processContentsObject(value, container);
    }
    m_stack->Pop();
  } else if (value.isString()) {
    processValue(value);
  }
  ttr::traceElementEnd(value);
}

void CTemplateResolver::processContentsObject(Json::Value& element, int container) {
  if (!element.isObject()) {
    ttr::report("CTemplateResolver::processContentsObject: JSON value not an object.");
    return;
  }
  processMembers(element, ttr::CElementMembers(element), container);
}

void CTemplateResolver::processOwnElement(Json::Value& element, int container) {
  const ttr::CElementMembers members(element);
  if (members.bounds == nullptr || !members.bounds->isArray() || members.isReplaced()) {
    return processMembers(element, members, container);
  }
  // Nobody else sees the element yet, and an exception discards it. So it can lend its bounds to
  // its frame meanwhile, which costs less than a copy.
  if (members.context != nullptr) processContentsContextElement(*members.context);
  Json::Value& bounds = *members.bounds;
  resolveBounds(bounds);
  const ttr::CBoundsNumbers numbers(bounds);
  if (!numbers.areAll()) {
    m_stack->BoundsSet(bounds);
    return processPlainMembers(element, members, container);
  }
  m_stack->BoundsSwap(bounds);
  processPlainMembers(element, members, container);
  const std::vector<CTemplateStack::CStackFrame>& frames = m_stack->frames();
  if (!frames.empty() && numbers.areOf(frames.back().bounds)) {
    m_stack->BoundsSwap(bounds);
  } else {
    bounds = numbers.array();  // a handler has changed the stack
  }
}

void CTemplateResolver::processMembers(Json::Value& element, const ttr::CElementMembers& members,
                                       int container) {
  // Context and bounds come first, so that they are in force for what replaces the element.
  if (members.context != nullptr) processContentsContextElement(*members.context);
  if (members.bounds != nullptr) processContentsBoundsElement(*members.bounds);
  if (members.include != nullptr) {
    element = processContentsIncludeElement(*members.include);
    ttr::traceReplacement("Include", element);
  } else if (members.ifValue != nullptr) {
    replaceByIfContents(element, *members.ifValue, container);
    ttr::traceReplacement("If", element);
  } else if (members.loop != nullptr) {
    element = expandLoop(*members.loop, container);
    ttr::traceReplacement("Loop", element);
  } else {
    processPlainMembers(element, members, container);
  }
}

void CTemplateResolver::replaceByIfContents(Json::Value& element, Json::Value& ifValue,
                                            int container) {
  // As processContentsIfElement, but moving: nobody sees the If that is replaced.
  Json::Value result;
  if (Json::Value* contents = resolveIfContents(ifValue, container)) {
    ttr::memberOf(result, "Contents") = std::move(*contents);
  }
  element = std::move(result);
}

void CTemplateResolver::processPlainMembers(Json::Value& element,
                                            const ttr::CElementMembers& members, int container) {
  if (members.layout != nullptr) {
    ttr::traceMemberBegin("Layout", *members.layout);
    processLayoutElement(*members.layout);
    ttr::traceMemberEnd(*members.layout);
  }
  if (members.display != nullptr) processContentsDisplayElement(*members.display);
  if (members.play != nullptr) processContentsPlayElement(*members.play);
  if (members.prec != nullptr) processContentsPrecElement(*members.prec);
  int inner = container;
  if (members.renderType != nullptr) {
    ttr::traceMemberBegin("RenderType", *members.renderType);
    processValue(*members.renderType);
    ttr::traceMemberEnd(*members.renderType);
    inner = processContainment(element, getElementType(*members.renderType), container);
  }
  if (members.contents != nullptr) processContentsArray(*members.contents, inner);
}

CTemplateResolver::eElementType CTemplateResolver::getElementType(
    const Json::Value& renderType) const {
  if (!renderType.isInt()) return elementNone;
  // Compared as JSON values, where a number of another JSON type never equals and the types have
  // an order: an unsigned 0 is greater than 0, and 1024.0 is plain.
  if (renderType.type() != Json::intValue) return elementPlain;
  const int number = renderType.asInt();
  if (number <= 0) return elementNone;
  return number == ttr::containerRenderType ? elementContainer : elementPlain;
}

int CTemplateResolver::processContainment(Json::Value& element, eElementType type, int container) {
  switch (type) {
    case elementPlain:
      // Marked for an id above 0 only, while below any id but 0 counts as nested: deliberate.
      if (container > 0) ttr::memberOf(element, "Container") = container;
      return container;
    case elementContainer: {
      if (container != 0) {
        ttr::report("CTemplateResolver::processContentsObject: Nested containers unsupported.");
        return container;
      }
      const int id = nextContainerID();
      Json::Value& frame = ttr::memberOf(element, "Frame");
      ttr::traceMemberBegin("Frame", frame);
      ttr::memberOf(frame, "Id") = id;
      ttr::traceMemberEnd(frame);
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
