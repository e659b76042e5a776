// The smallest host: one token handler, one screen, one page from a file.
#include <TokenTemplateResolver/template_resolver.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

// Answers $(audio.volume).
class CAudioHandler : public ITokenHandler {
 public:
  Json::Value GetPartsValue(const CTokenParts& parts) const override {
    return parts.size() == 2 && parts[1] == "volume" ? Json::Value(7) : Json::Value();
  }
};

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: minimal_host PAGE.json" << std::endl;
    return 2;
  }
  std::ifstream file(argv[1]);
  const std::string page{std::istreambuf_iterator<char>(file), {}};

  const CAudioHandler audio;
  CTokenResolver tokens;
  tokens.Set("audio", &audio);
  CTemplateStack stack;
  CTemplateResolver resolver(&tokens, &stack);
  resolver.SetScreenSize(720, 1280);  // height, width
  resolver.Input(page);
  resolver.Process();
  std::cout << resolver.Output() << std::endl;
}
