#pragma once
// Hands generated native sources to real consumers: glslangValidator for GLSL, the
// C++ compiler for Metal (which is C++14 underneath), and tree-sitter grammars for
// Swift and Kotlin. Each check says whether its tool is there, so that a test can
// skip instead of passing when it is not.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include <sys/wait.h>

namespace tintwork::testing {

struct ToolResult {
    int status = -1;
    std::string output;
};

inline std::string shellQuoted(const std::string& text) {
    std::string quoted = "'";
    for (char c : text) {
        quoted += (c == '\'') ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

// Runs a shell command, collecting standard output and error.
inline ToolResult runTool(const std::string& command) {
    ToolResult result;
    FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr) {
        return result;
    }
    char buffer[4096];
    while (std::fgets(buffer, sizeof buffer, pipe) != nullptr) {
        result.output += buffer;
    }
    const int status = ::pclose(pipe);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

inline bool hasTool(const std::string& name) {
    return runTool("command -v " + shellQuoted(name)).status == 0;
}

// The tree-sitter checker, when its packages are installed (cd tests/native && npm install).
inline std::optional<std::filesystem::path> syntaxChecker() {
    const std::filesystem::path folder = std::filesystem::path(TINTWORK_SOURCE_DIR) / "tests" / "native";
    if (!hasTool("node") || !std::filesystem::exists(folder / "node_modules" / "tree-sitter")) {
        return std::nullopt;
    }
    return folder / "check-syntax.js";
}

// Parses `file` as `language` ("swift", "kotlin"); status 0 means no syntax error.
inline ToolResult checkSyntax(const std::filesystem::path& checker, const std::string& language,
                              const std::filesystem::path& file) {
    return runTool("node " + shellQuoted(checker.string()) + " " + language + " " + shellQuoted(file.string()));
}

// Compiles GLSL that is meant to be included after a #version line, wrapped in a
// minimal fragment shader of the given version header.
inline ToolResult validateGLSL(const std::filesystem::path& folder, const std::string& versionHeader,
                               const std::string& generated, const std::string& name) {
    const std::filesystem::path shader = folder / (name + ".frag");
    std::ofstream(shader) << versionHeader << "\n" << generated << "\nout vec4 fragColor;\n"
                          << "void main() {\n    fragColor = vec4(1.0);\n}\n";
    return runTool("glslangValidator " + shellQuoted(shader.string()));
}

// Compiles Metal source as C++14 against a stand-in for metal_stdlib that declares the
// vector types and the `constant` address space the generated file uses.
inline ToolResult compileMetalAsCpp(const std::filesystem::path& folder, const std::filesystem::path& source) {
    const std::filesystem::path include = folder / "metal-include";
    std::filesystem::create_directories(include);
    std::ofstream(include / "metal_stdlib")
        << "#pragma once\n"
           "namespace metal {}\n"
           "#define constant const\n"
           "struct float2 { float x, y; constexpr float2(float a, float b) : x(a), y(b) {} };\n"
           "struct float4 {\n"
           "    float x, y, z, w;\n"
           "    constexpr float4(float a, float b, float c, float d) : x(a), y(b), z(c), w(d) {}\n"
           "};\n";
    return runTool("c++ -std=c++14 -fsyntax-only -Wall -Werror -Wno-unused-const-variable -I " +
                   shellQuoted(include.string()) + " -x c++ " + shellQuoted(source.string()));
}

}  // namespace tintwork::testing
