#include <TokenTemplateHandlers/clock_handler.h>
#include <TokenTemplateHandlers/context_handler.h>
#include <TokenTemplateHandlers/json_handler.h>
#include <TokenTemplateResolver/TokenTemplateResolver.h>

#include <iostream>

int main() {
  const CJsonHandler audio(Json::Value(7));
  CTemplateStack stack;
  const CContextHandler context(&stack);
  CClockHandler clock;
  clock.SetTime(4102488000);
  CTokenResolver tokens;
  tokens.Set("volume", &audio);
  tokens.Set("context", &context);
  tokens.Set("clock", &clock);
  CTemplateResolver resolver(&tokens, &stack);
  resolver.SetScreenSize(720, 1280);
  resolver.Input(R"j({"Contents":[{"Context":{"unit":"dB"},"Bounds":["50%",0,1,1],
    "Contents":["$(volume) $(context.unit) $(clock:%Y)"]}]})j");
  resolver.Process();
  const bool right = resolver.Output() ==
                         R"j({"Contents":[{"Bounds":[640,0,1,1],"Contents":["7 dB 2100"],)j"
                         R"j("Context":{"unit":"dB"}}]})j" &&
                     tf::formatTimeRemaining(3900, "%H:%M") == "1:05" && regexMatch("a", "A") &&
                     stack.boundsFind().size() == 6;
  std::cout << resolver.Output() << (right ? " as expected" : " NOT as expected") << std::endl;
  return right ? 0 : 1;
}
