// quill: format, lint and highlight files from the command line through the
// engine's C interface.
#include <CLI/CLI.hpp>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "quill.h"

namespace {

struct EngineString {
  void operator()(char* p) const { h3x9c(p); }
};
using OwnedString = std::unique_ptr<char, EngineString>;

bool ReadInput(const std::string& path, std::string* text) {
  if (path == "-") {
    text->assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
    return true;
  }
  std::ifstream file(path, std::ios::binary);
  if (!file) return false;
  std::ostringstream content;
  content << file.rdbuf();
  *text = std::move(content).str();
  return true;
}

std::string Format(const std::string& text) {
  if (text.empty()) return "\n";
  std::vector<char> out(text.size() * 2 + 64);
  int32_t n = n5p8w(text.data(), static_cast<int32_t>(text.size()), out.data(), static_cast<int32_t>(out.size()));
  if (n < -1) {
    out.resize(static_cast<std::size_t>(-n));
    n = n5p8w(text.data(), static_cast<int32_t>(text.size()), out.data(), static_cast<int32_t>(out.size()));
  }
  return n < 0 ? text : std::string(out.data(), static_cast<std::size_t>(n));
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"quill: Verilog formatter and linter, constraint highlighter"};
  app.require_subcommand(1);
  std::string path;
  auto* format = app.add_subcommand("format", "Print the formatted Verilog file");
  format->add_option("file", path, "Verilog file, or - for standard input")->required();
  auto* lint = app.add_subcommand("lint", "Print the lint findings of a Verilog file as JSON");
  lint->add_option("file", path, "Verilog file, or - for standard input")->required();
  auto* highlight = app.add_subcommand("highlight", "Print the token class of every byte of a constraint file");
  highlight->add_option("file", path, "Constraint or Tcl file, or - for standard input")->required();
  app.add_subcommand("version", "Print the engine version");
  CLI11_PARSE(app, argc, argv);

  if (app.got_subcommand("version")) {
    OwnedString version(q7m2k());
    std::cout << (version ? version.get() : "unknown") << '\n';
    return 0;
  }
  std::string text;
  if (!ReadInput(path, &text)) {
    std::cerr << "quill: cannot read " << path << '\n';
    return 2;
  }
  if (format->parsed()) {
    std::cout << Format(text);
  } else if (lint->parsed()) {
    OwnedString report(t2v6r(text.data(), static_cast<int32_t>(text.size())));
    std::cout << (report ? report.get() : "[]") << '\n';
  } else if (highlight->parsed() && !text.empty()) {
    std::vector<unsigned char> classes(text.size());
    x4b7d(text.data(), static_cast<int32_t>(text.size()), classes.data(), static_cast<int32_t>(classes.size()));
    for (unsigned char c : classes) std::cout << static_cast<int>(c) << ' ';
    std::cout << '\n';
  }
  return 0;
}
