// The program with all its files: the first line of the bytes is an option file, the rest the
// design. Whatever the two say, the run ends with one of its exit codes, an exit code of 0 means a
// whole output, the input stays as it was, and no file is left beside the outputs.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <string_view>
#include <system_error>

#include "run/options.h"
#include "run/run.h"
#include "support/program.h"

namespace fs = std::filesystem;

namespace {

/// The current folder for as long as it lives: new and empty, away from every name of the fuzzer.
class Folder {
 public:
  Folder() : before_(fs::current_path()), own_(makeFolder()) { fs::current_path(own_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    fs::current_path(before_);
    fs::remove_all(own_);
  }

 private:
  fs::path before_;
  fs::path own_;
};

void require(bool holds, std::string_view what) {
  if (holds) return;
  std::cerr.clear();
  std::cerr << what << '\n';
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  const std::string design = bytes.substr(std::min(bytes.find('\n'), size - 1) + 1);
  std::string words = bytes.substr(0, bytes.find('\n'));
  for (char& c : words) {
    if (c == '/') c = '_';  // every name stays in the folder
  }
  std::cout.setstate(std::ios::badbit);
  std::cerr.setstate(std::ios::badbit);
  const Folder folder;
  writeFile("in.tt2", design);
  writeFile("opt", words);
  writeFile("out", "an older output");
  const int exitCode = ostrel::runProgram({"ostrel", "-output", "out", "-log", "log", "-err", "err",
                                           "-percent", "pc", "@opt", "-input", "in.tt2"});
  require(exitCode >= 0 && exitCode <= 2, "an exit code of no meaning");
  require(readFile("in.tt2") == design, "the input has changed");
  const std::string& output = ostrel::options().output;
  const std::string left = readFile(output);
  std::error_code ignored;
  require(exitCode == 0 ? left.ends_with(".end\n")
                        : left.empty() || fs::equivalent(output, "in.tt2", ignored),
          "an output that doesn't fit the exit code");
  for (const fs::directory_entry& file : fs::directory_iterator(".")) {
    require(!file.path().filename().string().starts_with(".ostrel-"), "a file is left over");
  }
  return 0;
}
