// The program as a whole, in a folder of its own: option file, input, log, error file and companion
// are made from the bytes, and an older output and companion wait for it. What it leaves has to fit
// its exit code.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>

#include "run/run.h"

namespace fs = std::filesystem;

namespace {

fs::path makeFolder() {
  std::string name = (fs::temp_directory_path() / "ostrel-program-XXXXXX").string();
  return mkdtemp(name.data());
}

void write(const char* name, std::string_view text) {
  std::ofstream(name, std::ios::binary) << text;
}

std::string read(const char* name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void require(bool holds, std::string_view what) {
  if (holds) return;
  std::cerr.clear();
  std::cerr << what << '\n';
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fs::path folder = makeFolder();
  fs::current_path(folder);
  std::cout.setstate(std::ios::badbit);
  std::cerr.setstate(std::ios::badbit);
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) fs::remove_all(entry);

  // The option file ends at the first NUL; names with a slash would lead out of the folder.
  std::string bytes(data, data + size);
  const std::size_t end = std::min(bytes.find('\0'), bytes.size());
  std::string words = bytes.substr(0, end);
  std::replace(words.begin(), words.end(), '/', '_');
  const std::string input = end < size ? bytes.substr(end + 1) : "";
  const std::string old = "old\n";
  write("opt", words);
  write("in", input);
  write("out", old);
  const int code = ostrel::runProgram({"ostrel", "-input", "in", "-output", "out", "@opt"});

  require(code >= 0 && code <= 2, "an unknown exit code");
  require(read("in") == input, "the input is another one");
  // The words may have moved the output elsewhere; where it is, it is whole, empty or untouched.
  const std::string output = read("out");
  require(output == old || output.empty() || output.ends_with(".end\n") || output == input ||
              words.find("out") != std::string::npos,
          "half an output");
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    require(!entry.path().filename().string().starts_with(".ostrel-"), "a stray file");
  }
  fs::current_path(folder.parent_path());
  return 0;
}
