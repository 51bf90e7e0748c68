// One end-to-end case: a text file of sections, each headed by a line "== name".
//
//   args             the words of the command line, as one line
//   input NAME       a file that stands in the run's folder
//   exit             the exit code, 0 if the section is missing
//   stdout, stderr   what the run prints there; empty if missing
//   output NAME      a file as the run leaves it
//   verify N         the verdict of ostrel-verify, 0 if missing; the text says why it isn't 0
//
// Text in front of the first section says which fault the case would show.
#pragma once

#include <string>
#include <utility>
#include <vector>

struct CaseFile {
  using Section = std::pair<std::string, std::string>;  // name, text

  std::string preface;
  std::vector<Section> sections;

  static CaseFile load(const std::string& path);
  void save(const std::string& path) const;

  /// The text of a section, or the fallback if there is none.
  std::string text(const std::string& name, const std::string& fallback) const;
};
