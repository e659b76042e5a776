#include "preview/assets.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <system_error>
#include <vector>

#include "files.h"
#include "preview/image_format.h"
#include "tool_error.h"

namespace ttr {
namespace {

namespace fs = std::filesystem;

/// Larger files are no images for a small screen, and would fill the memory of whoever looks.
constexpr std::uintmax_t largestImage = 16U << 20U;

std::string lowercase(std::string text) {
  for (char& letter : text) {
    letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
  }
  return text;
}

std::string base64(const std::string& bytes) {
  static constexpr char digits[] =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - at);
    unsigned group = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      group = group << 8U | (i < count ? static_cast<unsigned char>(bytes[at + i]) : 0U);
    }
    for (std::size_t i = 0; i < 4; ++i) {
      text += i <= count ? digits[group >> (18U - 6U * i) & 63U] : '=';
    }
  }
  return text;
}

/// The entry of `directory` that is called `name`, else the first by its name that is so but for
/// letter case.
std::optional<fs::path> entryOf(const fs::path& directory, const std::string& name) {
  std::error_code ignored;
  if (fs::exists(directory / name, ignored)) return directory / name;
  std::vector<std::string> matches;
  for (fs::directory_iterator entry(directory, ignored), end; entry != end;
       entry.increment(ignored)) {
    const std::string candidate = entry->path().filename().string();
    if (lowercase(candidate) == lowercase(name)) matches.push_back(candidate);
  }
  if (matches.empty()) return std::nullopt;
  return directory / *std::min_element(matches.begin(), matches.end());
}

/// True when `path`, free of symbolic links, is `directory` or below it.
bool isWithin(const fs::path& path, const fs::path& directory) {
  const auto [end, ignored] =
      std::mismatch(directory.begin(), directory.end(), path.begin(), path.end());
  return end == directory.end();
}

bool leadsOut(const fs::path& name) {
  return name.is_absolute() || std::find(name.begin(), name.end(), "..") != name.end();
}

}  // namespace

bool isImageName(const std::string& name) {
  static constexpr std::array<const char*, 4> endings = {".png", ".jpg", ".jpeg", ".bmp"};
  const std::string text = lowercase(name);
  return std::any_of(endings.begin(), endings.end(), [&](const std::string& ending) {
    return text.size() > ending.size() &&
           text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
  });
}

CAssets::CAssets(const std::string& directory) {
  if (directory.empty()) return;
  std::error_code error;
  m_directory = fs::canonical(directory, error);
  if (!error && !fs::is_directory(m_directory)) {
    error = std::make_error_code(std::errc::not_a_directory);
  }
  if (error) throw CToolError(directory, error.message());
}

const CImage& CAssets::Find(const std::string& name) {
  const auto found = m_images.find(name);
  if (found != m_images.end()) return found->second;
  return m_images.emplace(name, load(name)).first->second;
}

CImage CAssets::load(const std::string& name) {
  if (m_directory.empty()) return {name, "", ""};
  if (leadsOut(name) || name.find('\0') != std::string::npos) {
    return {name, "", "outside of the assets"};
  }
  fs::path path = m_directory;
  for (const fs::path& step : fs::path(name)) {
    const std::optional<fs::path> entry = entryOf(path, step.string());
    path = entry ? *entry : path / step;
  }
  m_paths.insert(path.string());
  std::error_code error;
  const fs::path target = fs::canonical(path, error);
  if (error) return {name, "", "not found"};
  if (!isWithin(target, m_directory)) return {name, "", "outside of the assets"};
  const std::uintmax_t size = fs::is_regular_file(target, error) ? fs::file_size(target, error) : 0;
  if (error || size == 0) return {name, "", "no image"};
  if (size > largestImage) return {name, "", "too large"};
  try {
    const std::string bytes = readText(target.string());
    const std::string type = mediaType(bytes);
    if (type.empty()) return {name, "", "neither PNG nor JPEG"};
    if (!isWellFormedImage(bytes)) return {name, "", "broken"};
    return {name, "data:" + type + ";base64," + base64(bytes), ""};
  } catch (const CToolError& toolError) {
    return {name, "", "cannot be read"};
  }
}

}  // namespace ttr
