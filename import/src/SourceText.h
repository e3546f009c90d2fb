#pragma once
// Reading an importer's source file whole, within a size limit, and checking its text.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tintwork::importing {

// The largest source file an importer reads into memory.
inline constexpr std::uintmax_t maxSourceBytes = 64u * 1024u * 1024u;

// The file's bytes. Read failures throw FileError as readFileBytes does; a file larger
// than `limit` throws DocumentColorParsingError without being read.
std::string readSourceFile(const std::filesystem::path& path, std::uintmax_t limit = maxSourceBytes);

// True when the bytes are well-formed UTF-8 (no overlong forms, surrogates or values past U+10FFFF).
bool isValidUTF8(std::string_view text);

// The text with every byte outside a well-formed UTF-8 sequence replaced by U+FFFD.
std::string wellFormedUTF8(std::string_view text);

// Where JSON text first nests arrays and objects deeper than `maxDepth`, counted without
// parsing (brackets inside strings don't count), so that a hostile document is refused
// before a parser's or decoder's recursion meets it; nullopt when it never does.
std::optional<std::size_t> firstTooDeepBracket(std::string_view json, std::size_t maxDepth);

}  // namespace tintwork::importing
