// Running a program of the build in a folder of its own.
#pragma once

#include <string>
#include <vector>

struct ProgramResult {
  int exitCode;  // 128 + signal for a crash
  std::string out;
  std::string err;
};

/// Runs `path` under the name `words[0]`, in `folder`, with files in the place of its streams.
ProgramResult runIn(const std::string& folder, const std::string& path,
                    const std::vector<std::string>& words);

std::string readFile(const std::string& path);
void writeFile(const std::string& path, const std::string& content);

/// A new empty folder for the running test.
std::string makeFolder();
