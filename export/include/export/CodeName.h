#pragma once
// Code names of exported items: the word helpers, the five name transforms and the
// identifier-safe form used by the codeSafeName tag.

#include <string>
#include <string_view>
#include <vector>

#include "model/BuildConfig.h"

namespace tintwork {

// Pieces of `text` between characters that are not Unicode letters or digits; empty pieces dropped.
std::vector<std::string> words(std::string_view text);
// First word lower-cased, the others capitalised (first letter upper, rest lower), joined.
std::string camel(std::string_view text);
// Every word capitalised, joined.
std::string pascal(std::string_view text);
// The first character upper-cased, the rest unchanged.
std::string upperFirst(std::string_view text);
// Unicode lower case of the whole text.
std::string lowercased(std::string_view text);

// Appends one name part to a code name under construction: the piece rule of the
// transform, then its joiner when `result` is not empty.
void appendCodeNamePart(std::string& result, std::string_view part, BuildNameTransform transform);

// The final code name: the namespace parts and the item's own name through the
// transform, with the task's prefix and suffix (never transformed) around them.
std::string codeName(const std::vector<std::string>& namespaceParts, std::string_view name, const BuildTask& task);

// Keeps letters, numbers and "_"; puts `fallbackPrefix` in front when the result starts with a number.
std::string codeSafeName(std::string_view text, std::string_view fallbackPrefix = "color");

}  // namespace tintwork
