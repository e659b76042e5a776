#ifndef SRC_TEMPLATE_RENDER_TYPE_H
#define SRC_TEMPLATE_RENDER_TYPE_H

namespace ttr {

/// The "RenderType" of a container element.
inline constexpr int containerRenderType = 1024;

}  // namespace ttr

#endif  // SRC_TEMPLATE_RENDER_TYPE_H
