// The reader of PLA files: a forgiving parser, driven by single characters.
//
// Each directive begins at a character that the main loop finds ('#', '.', or the first character
// of a row), and everything else between directives is passed over. An operation leaves the
// character where it stopped as the current one (current_), already taken from the stream; that
// decides whether the rest of the line is skipped, so it is one field for all operations.
//
// Example, the cursor under the current character, the stream standing behind it:
//
//   .i 2 or so          `.` is found; the word and the number are taken from the stream past it
//   ^                   the current one is still `.`, no newline: the rest " or so" is skipped
//   10 11               the row's first character is found, the row takes six more
//        ^              ... and its newline is the current one: nothing is left to skip. Skipping
//                       here would lose the next line.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "fil/char_source.h"
#include "fil/pla_file.h"

namespace ostrel {

/// Reads a whole file into an empty PlaFile. Messages go straight to the console, in the order of
/// the faults. Fatal if the file can't be used: a fault that stops the reading, or .i or .o
/// missing.
Status readPla(std::istream& stream, const Console& console, PlaFile& file);

/// The state of one reading; readPla is the way to use it.
class PlaReader {
 public:
  PlaReader(PlaFile& file, std::istream& stream, const Console& console)
      : file_(file), source_(stream), console_(console) {}

  Status read();

 private:
  Status readComment();
  Status readPropertyComment(std::string_view word);
  Status readDeclaration(NameKind kind);
  int readDeclaredNames(PlaFile::NameTable& table, int n, std::string_view title);
  void readStateBits();
  void appendProperty(std::size_t index);

  Status readDotCommand();
  Status dispatchDotCommand(std::string_view word);
  Status readCount(char letter, int& target, int limit);
  Status readType();
  Status readColumnNames(NameKind kind, std::string_view wordFault, std::string_view countFault);
  void readPhase(bool isComment);

  Status readTerm();
  Status allocateRows();
  void readInputPart();
  void readOutputPart();
  void skipBlanks();

  void nextCharacter();
  std::optional<std::string> word();
  void skipRestOfLine();
  Status fault(std::string_view message);

  PlaFile& file_;
  CharSource source_;
  Console console_;
  std::array<std::optional<int>, 5> capacity_;  // by NameKind: most names, from the first list on
  int current_ = '\n';   // behind the end of the stream: 255, which no rule looks for
  bool failed_ = false;  // a character was wanted behind the end
};

}  // namespace ostrel
