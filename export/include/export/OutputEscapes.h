#pragma once
// Writing names and string values into the stock templates' output languages so that
// each language's own reader gets back exactly the text (or, where the language cannot
// hold a character at all, the nearest it can). Ordinary text comes out unchanged.
// The stock templates reach these as filters (registerOutputEscapeFilters).

#include <string>
#include <string_view>

namespace tintwork {

namespace stencil {
class Extension;
}

// CSS

// A custom property's value: the text itself when CSS reads it back as written
// (`"Helvetica Neue", Arial, sans-serif`), otherwise a CSS string holding it.
std::string cssPropertyValue(std::string_view value);
// A double-quoted CSS string. A NUL, which CSS cannot hold, becomes U+FFFD.
std::string cssString(std::string_view value);
// A name after "--": letters, digits, "-", "_" and non-ASCII stay; the rest is escaped.
std::string cssIdentifier(std::string_view name);

// SCSS

// A variable name after "$": as cssIdentifier, and a leading digit escaped.
std::string scssIdentifier(std::string_view name);
// Text to stand inside a double-quoted SCSS string whose interpolation gives it back.
std::string scssStringContent(std::string_view text);

// LESS

// A variable name after "@": LESS takes only ASCII letters, digits, "-" and "_", so
// any other byte is written as "_xx_" with its hex value.
std::string lessIdentifier(std::string_view name);
// An escaped LESS string (~"…" or ~'…') that LESS prints as the text.
std::string lessEscapedString(std::string_view text);
// Whether "--name" can stand as a property name in LESS as it is.
bool isPlainLessName(std::string_view name);

// Swift and Kotlin

// A Swift string literal: the raw #"…"# form when it holds the value as written,
// otherwise a plain literal with escapes.
std::string swiftStringLiteral(std::string_view value);
// A Kotlin string literal: the raw """…""" form (with ${'$'} for "$") when it holds the
// value, otherwise a plain literal with escapes.
std::string kotlinStringLiteral(std::string_view value);

// Comments

// Text safe inside /* */ and // comments of C-like languages: control characters,
// backslashes and "*/" are written as visible escapes.
std::string commentText(std::string_view value);

// Registers the filters cssValue, cssName, scssName, scssString, lessName,
// lessString, lessProperty, lessPropertyVariable, swiftString, kotlinString and
// commentText.
void registerOutputEscapeFilters(stencil::Extension& extension);

}  // namespace tintwork
