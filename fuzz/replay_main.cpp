// Runs a fuzz target once on every file of a folder: the inputs that fuzzing has left behind, as a
// test for builds without libFuzzer.

#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz_support.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesOf(const fs::path& folder) {
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    files.push_back(entry.path());
  }
  if (files.empty()) throw std::runtime_error("no inputs in " + folder.string());
  std::sort(files.begin(), files.end());
  return files;
}

std::string readFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  // A folder opens as well; only reading it fails.
  std::string text;
  if (file && file.peek() != std::ifstream::traits_type::eof()) {
    text.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  if (!fs::is_regular_file(path) || text.size() != fs::file_size(path)) {
    throw std::runtime_error("cannot read " + path.string());
  }
  return text;
}

// Processor time: a busy machine makes no hang.
void limitProcessorTime(int seconds) {
  itimerval limit{};
  limit.it_value.tv_sec = seconds;
  setitimer(ITIMER_PROF, &limit, nullptr);
}

extern "C" void reportHang(int /*signal*/) {
  static const char text[] = "the input above takes too long\n";
  const ssize_t written = write(STDERR_FILENO, text, sizeof text - 1);
  _exit(written < 0 ? 2 : 1);
}

void replay(const fs::path& path) {
  const std::string text = readFile(path);
  // Before the run: however the target ends, the last line names the input.
  std::cout << path.filename().string() << std::endl;
  limitProcessorTime(TTR_REPLAY_LIMIT);
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  limitProcessorTime(0);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: " << argv[0] << " FOLDER" << std::endl;
    return 2;
  }
  std::signal(SIGPROF, reportHang);
  try {
    const std::vector<fs::path> files = filesOf(argv[1]);
    for (const fs::path& file : files) replay(file);
    std::cout << files.size() << " inputs replayed" << std::endl;
  } catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
    return 1;
  }
  return 0;
}
