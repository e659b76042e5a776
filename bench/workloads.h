#ifndef BENCH_WORKLOADS_H
#define BENCH_WORKLOADS_H

#include <json/value.h>

#include <string>
#include <vector>

namespace bench {

/// One page and what its tokens stand for.
struct CWorkload {
  std::string name;  ///< kind and size, as "grid/100"
  std::string unit;  ///< what cost is counted by: "cell", "token", "element", "pass"
  int units = 0;     ///< how many of them the page resolves to
  std::string page{};
  Json::Value values{Json::objectValue};  ///< each member is a token handler of that name
  std::vector<std::string> variables{};   ///< names served from the stack, besides "context"
  std::vector<std::string> includes{};    ///< texts of the files that the page includes
};

/// `cells` copies of two elements in a grid: bounds with percentages, colours as text, three
/// embedded tokens, one image name to lowercase.
CWorkload grid(int cells);

/// 300 elements in nested containers, a third of their strings with a token.
CWorkload staticPage();

/// One string with `tokens` tokens.
CWorkload text(int tokens);

/// A list of `rows` rows, comma-separated and as an array, read by index and counted.
CWorkload list(int rows);

/// A chain of 11 files of 50 elements each, written below `directory`.
CWorkload includeChain(const std::string& directory);

/// The three pages of the folder `examples`, what a device shows all day.
std::vector<CWorkload> examplePages(const std::string& examples);

/// All of them, in the sizes that are measured. `directory` takes the files of includeChain.
std::vector<CWorkload> allWorkloads(const std::string& directory, const std::string& examples);

}  // namespace bench

#endif  // BENCH_WORKLOADS_H
