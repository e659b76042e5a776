#ifndef TOOL_PREVIEW_ASSETS_H
#define TOOL_PREVIEW_ASSETS_H

#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace ttr {

/// An image that a page names, as a picture can hold it.
struct CImage {
  std::string name;     ///< as in the page
  std::string dataUri;  ///< empty when the image cannot be shown
  std::string reason;   ///< why not
};

/// True for a name that ends like that of an image. Fonts are no images.
bool isImageName(const std::string& name);

/// The images below one directory.
class CAssets {
 public:
  /// `directory` is empty for none: no image is then found.
  /// \throws CToolError when there is no such directory
  explicit CAssets(const std::string& directory);

  /// The PNG or JPEG file `name`, whose path may be written in other letter case than the page has
  /// it. Names that lead out of the directory, by symbolic links too, are refused.
  const CImage& Find(const std::string& name);

  /// The absolute paths that were looked for.
  const std::set<std::string>& paths() const { return m_paths; }

 private:
  CImage load(const std::string& name);

  std::filesystem::path m_directory;  ///< absolute, without symbolic links; empty for none
  std::map<std::string, CImage> m_images;
  std::set<std::string> m_paths;
};

}  // namespace ttr

#endif  // TOOL_PREVIEW_ASSETS_H
