#pragma once
// The words of a statement read as what they stand for: references checked
// against the form catalogue and the module variables, numbers, texts and
// paths. Each reader throws lexer::Error on a word it cannot take.

#include "tools/scenario/Lexer.h"
#include "tools/scenario/Script.h"

#include <QString>
#include <cstddef>
#include <vector>

namespace scenario::operands {

// Where a reference stands decides what it may name.
enum class RefUse { Action, ActionOrForm, FormOnly, Value };

Ref parseRef(const lexer::Token& token, RefUse use);

int integer(const lexer::Token& t, const char* what);
// Strings and heredocs are both texts; the heredoc's lines were joined already.
Value value(const lexer::Token& t);
Value text(const lexer::Token& t);

QString decodePath(const lexer::Token& t);
// Paths of the application folder stay inside it, so that a scenario cannot
// touch files of the machine it runs on.
QString relativePath(const lexer::Token& t);

void expectWord(const lexer::Token& t, const char* word);
// True for !=, false for ==.
bool comparison(const lexer::Token& t);
// Refuses a statement of fewer than low or more than high words.
void count(const std::vector<lexer::Token>& t, std::size_t low, std::size_t high);

} // namespace scenario::operands
