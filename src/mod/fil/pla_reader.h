// The reader of PLA files: a forgiving parser, driven by single characters.
//
// Each directive begins at a character that the main loop finds ('#', '.', or the first character
// of a row), and everything else between directives is passed over. An operation leaves the
// character where it stopped as the current one; that decides whether the rest of the line is
// skipped, so it is one field for all operations.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "fil/char_source.h"
#include "fil/pla_file.h"

namespace ostrel {

class PlaReader {
 public:
  PlaReader(PlaFile& file, std::istream& stream, const Console& console)
      : file_(file), source_(stream), console_(console) {}

  /// Reads the whole stream into the file; the result is that of PlaFile::read.
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
  Status readInputNames();
  Status readOutputNames();
  Status readColumnNames(NameKind kind, std::string_view wordFault, std::string_view countFault);
  void readPhase(bool isComment);

  Status readTerm();
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
  int current_ = '\n';   // behind the end of the stream: 255, which no rule looks for
  bool failed_ = false;  // a character was wanted behind the end
};

}  // namespace ostrel
