// Token bodies, and texts with tokens in them, with handlers that answer what the input says.
// Input: a body; a text; then the answers, a value for each line; the text "!" for an exception.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "TokenTemplateResolver/parsed_token.h"
#include "TokenTemplateResolver/token_resolver.h"
#include "fuzz_input.h"
#include "fuzz_support.h"

namespace {

using ttr::require;

struct CHandlerFault : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Answers the same question always in the same way, so that a second run can be compared.
class CAnswers : public ITokenHandler {
 public:
  CAnswers(const std::vector<Json::Value>& answers, unsigned first)
      : m_answers(answers), m_first(first) {}

  Json::Value GetIndexedValue(const CParsedToken& token, const Json::Value& index) const override {
    require(index.isInt(), "an index is an int");
    return answer(1 + static_cast<unsigned>(index.asInt()), token.nameParts);
  }
  Json::Value GetValue(const CParsedToken& token) const override {
    return answer(2 + static_cast<unsigned>(token.argument.size()), token.nameParts);
  }
  Json::Value GetPartsValue(const CTokenParts& parts) const override { return answer(3, parts); }

 private:
  Json::Value answer(unsigned question, const CTokenParts& parts) const {
    if (m_answers.empty()) return Json::Value();
    for (const std::string& part : parts) question += static_cast<unsigned>(part.size());
    const Json::Value& value = m_answers[(m_first + question) % m_answers.size()];
    if (value.isString() && value.asString() == "!") throw CHandlerFault("no answer");
    return value;
  }

  const std::vector<Json::Value>& m_answers;
  unsigned m_first;
};

/// What an operation came to: a value, or the text of what it threw.
struct COutcome {
  Json::Value value;
  std::string fault;

  bool operator==(const COutcome& other) const {
    return fault == other.fault && ttr::same(value, other.value);
  }
};

template <typename Step>
COutcome outcomeOf(const Step& step) {
  COutcome outcome;
  ttr::finishes<std::runtime_error, Json::LogicError, CHandlerFault>([&] {
    try {
      outcome.value = step();
    } catch (const std::exception& error) {
      outcome.fault = error.what();
      throw;
    }
  });
  return outcome;
}

// --- A second account of the token grammar: the delimiters of each section ---

const char* delimitersOf(std::int32_t section) {
  switch (section) {
    case sectionName:
      return ".[:+-*/";
    case sectionIndex:
      return ".]";
    case sectionIndexEnd:
      return ":+-*/";
    case sectionArgument:
      return "[";
    case sectionOperand:
      return ".:[";
    default:
      return "\n";
  }
}

struct CExpectedToken {
  std::vector<std::string> name, index, operand;
  std::string argument;
  char operation = '\0';
  std::int32_t section = sectionName;
  std::int32_t seen = 0;

  void store(std::string segment) {
    if (segment.empty()) return;
    if (section == sectionName && segment.back() == '#') {
      segment.pop_back();
      name.push_back(segment);
      section = sectionCount;
      seen |= section;
    } else if (section == sectionName) {
      name.push_back(segment);
    } else if (section == sectionIndex) {
      index.push_back(segment);
    } else if (section == sectionArgument) {
      argument = segment;
    } else if (section == sectionOperand) {
      operand.push_back(segment);
    }
  }

  void apply(char delimiter) {
    if (std::strchr("+-*/", delimiter) != nullptr) {
      operation = delimiter;
      section = sectionOperand;
    } else if (delimiter == ':') {
      section = sectionArgument;
    } else if (delimiter == '[') {
      section = sectionIndex;
    } else if (delimiter == ']') {
      section = sectionIndexEnd;
    }
    seen |= section;
  }
};

CExpectedToken expectedToken(const std::string& body) {
  CExpectedToken token;
  std::size_t start = 0;
  for (std::size_t end = 0;; start = end + 1) {
    end = body.find_first_of(delimitersOf(token.section), start);
    token.store(body.substr(start, end - start));
    if (end == std::string::npos) return token;
    token.apply(body[end]);
  }
}

void checkParsing(const std::string& body) {
  const CParsedToken token(body);
  const CExpectedToken expected = expectedToken(body);
  const std::vector<std::string>& name = token.nameParts;
  const std::vector<std::string>& index = token.indexParts;
  const std::vector<std::string>& operand = token.operandParts;
  require(name == expected.name, "name parts");
  require(index == expected.index, "index parts");
  require(operand == expected.operand, "operand parts");
  require(token.argument == expected.argument, "argument");
  require(token.operation == expected.operation, "operation");
  require(token.section == expected.section, "section");
  require(token.sectionsSeen == expected.seen, "sections seen");
}

// --- A second account of the values ---

/// The handler with the longest name that leads `parts`; null when there is none.
const ITokenHandler* handlerOf(const CTokenResolver& tokens, const CTokenParts& parts) {
  if (parts.empty()) return nullptr;
  std::string path;
  for (const std::string& part : parts) path += part + '.';
  const ITokenHandler* found = nullptr;
  for (const auto& [name, handler] : tokens.handlers()) {  // in order: prefixes come first
    if (path.compare(0, name.size() + 1, name + '.') == 0) found = handler;
  }
  return found;
}

Json::Value expectedElement(const CTokenResolver& tokens, const CTokenParts& parts) {
  Json::Value value;
  if (parts.size() == 1) {
    value = parts[0];
  } else if (const ITokenHandler* handler = handlerOf(tokens, parts)) {
    value = handler->GetPartsValue(parts);
  } else {
    return value;
  }
  CTokenResolver::CoerceToInt(value);
  return value;
}

Json::Value expectedValue(const CTokenResolver& tokens, const std::string& body) {
  const CParsedToken token(body);
  const ITokenHandler* handler = handlerOf(tokens, token.nameParts);
  if (handler == nullptr) return Json::Value();
  const bool indexed = (token.sectionsSeen & 2) != 0 && (token.sectionsSeen & 4) != 0;
  Json::Value value;
  if (indexed && !token.indexParts.empty()) {
    const Json::Value index = expectedElement(tokens, token.indexParts);
    if (!index.isInt()) return Json::Value();
    value = handler->GetIndexedValue(token, index);
  } else {
    value = handler->GetValue(token);
  }
  const bool counted = (token.sectionsSeen & 32) != 0;
  if (counted || (indexed && token.indexParts.empty())) CTokenResolver::ConvertToArray(value);
  if (counted) value = Json::Value::UInt{value.size()};
  if (token.operation != '\0' && !token.operandParts.empty()) {
    const Json::Value operand = expectedElement(tokens, token.operandParts);
    if (operand.isInt()) tokens.evaluateExpression(value, token.operation, operand);
  }
  return value;
}

/// `text` with its tokens replaced where they stand.
Json::Value expectedText(const CTokenResolver& tokens, std::string text) {
  std::size_t start = text.find("$(");
  if (start == 0 && text.find(')') == text.size() - 1) {
    return tokens.GetTokenValue(text.substr(2, text.size() - 3));
  }
  while (start != std::string::npos) {
    const std::size_t end = text.find(')', start);
    if (end == std::string::npos) break;
    Json::Value value = tokens.GetTokenValue(text.substr(start + 2, end - start - 2));
    CTokenResolver::ConvertToString(value);
    text.replace(start, end + 1 - start, value.asString());
    start = text.find("$(", start + value.asString().size());
  }
  return text;
}

void checkBody(const CTokenResolver& tokens, const std::string& body) {
  const COutcome found = outcomeOf([&] { return tokens.GetTokenValue(body); });
  require(found == outcomeOf([&] { return tokens.GetTokenValue(body); }), "the same value twice");
  require(found == outcomeOf([&] { return expectedValue(tokens, body); }), "the token's value");
  const bool resolvable = handlerOf(tokens, CParsedToken(body).nameParts) != nullptr;
  require(tokens.IsResolvable(body) == resolvable, "resolvable");
}

void checkSubstitution(const CTokenResolver& tokens, const Json::Value& written) {
  Json::Value value = written;
  const COutcome found = outcomeOf([&] {
    tokens.SubstituteTokenValues(value);
    return value;
  });
  if (!found.fault.empty()) require(ttr::same(value, written), "unchanged after an exception");
  if (!written.isString()) {
    require(ttr::same(value, written), "what is no text stays");
    require(!tokens.ContainsTokenSubstrings(written), "only text contains tokens");
    return;
  }
  const std::string text = written.asString();
  const COutcome expected = outcomeOf([&] { return expectedText(tokens, text); });
  require(found == expected, "the text with its tokens replaced");
  const std::size_t start = text.find("$(");
  const bool contains = start != std::string::npos && text.find(')', start) != std::string::npos;
  require(tokens.ContainsTokenSubstrings(written) == contains, "contains tokens");
  if (!contains) require(ttr::same(value, written), "text without tokens stays");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ttr::CSilence silence;
  ttr::CFuzzInput input(data, size);
  const std::string body = input.line();
  const std::string text = input.line();
  std::vector<Json::Value> answers;
  while (!input.ended()) answers.push_back(input.value());

  const CAnswers shallow(answers, 0);
  const CAnswers deep(answers, 1);
  CTokenResolver tokens;
  tokens.Set("a", &shallow);
  tokens.Set("a.b", &deep);
  tokens.Set("list", &shallow);
  tokens.Set("", &deep);

  checkParsing(body);
  checkBody(tokens, body);
  checkSubstitution(tokens, "$(" + body + ")");
  checkSubstitution(tokens, text);
  for (const Json::Value& answer : answers) checkSubstitution(tokens, answer);
  return 0;
}
