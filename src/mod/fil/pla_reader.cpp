#include "fil/pla_reader.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <ios>
#include <limits>
#include <ostream>
#include <utility>

namespace ostrel {
namespace {

constexpr std::size_t maxWordLength = 199;
constexpr std::size_t maxSkippedLine = 6000;
constexpr std::size_t maxStateBitsLine = 5999;
constexpr std::size_t maxPropertyText = 1023;

// More columns or names than this are taken for a damaged number: no such device exists, and a
// table of that size would be made on the word of a few characters.
constexpr int maxCount = 1'000'000;

bool isCount(const std::optional<int>& n) {
  return n && *n >= 0 && *n <= maxCount;
}

std::string_view declarationTitle(NameKind kind) {
  switch (kind) {
    case NameKind::Pin:
      return "#$ PINS";
    case NameKind::Node:
      return "#$ NODES";
    default:
      return "#$ FLIPFLOPS";
  }
}

char storedInput(int c) {
  return c == '0' || c == '1' ? static_cast<char>(c) : '-';
}

char storedOutput(int c, PlaType type) {
  switch (c) {
    case '1':
    case '4':
      return '1';
    case '0':
      return type == PlaType::fr || type == PlaType::fdr ? '0' : '~';
    case '-':
    case '2':
      return '-';
    default:
      return '~';
  }
}

}  // namespace

Status readPla(std::istream& stream, const Console& console, PlaFile& file) {
  try {
    return PlaReader(file, stream, console).read();
  } catch (const std::ios_base::failure&) {
    return Status::Fatal;  // the device or directory behind the stream can't be read
  }
}

void PlaReader::nextCharacter() {
  const int c = source_.take();
  failed_ = c == CharSource::end;
  current_ = failed_ ? 255 : c;
}

std::optional<std::string> PlaReader::word() {
  return source_.word(maxWordLength);
}

void PlaReader::skipRestOfLine() {
  if (current_ != '\n') source_.skipLine(maxSkippedLine);
}

Status PlaReader::fault(std::string_view message) {
  console_.err << message;
  return Status::Fatal;
}

Status PlaReader::read() {
  Status status = Status::Ok;
  while (status == Status::Ok) {
    nextCharacter();
    if (failed_ || current_ == '\0') break;
    switch (current_) {
      case '#':
        status = readComment();
        break;
      case '.':
        status = readDotCommand();
        break;
      case '-':
      case '0':
      case '1':
      case '2':
        status = readTerm();
        break;
      default:
        break;
    }
  }
  if (file_.count(NameKind::Input) == 0 || file_.count(NameKind::Output) == 0) return Status::Fatal;
  return status;
}

Status PlaReader::readComment() {
  nextCharacter();
  bool isProperty = current_ == '$';
  if (current_ == 'K') {
    nextCharacter();
    if (current_ == 'O') {
      nextCharacter();
      isProperty = current_ == 'L';
    }
  }
  if (isProperty) {
    const auto keyword = word();
    const Status status = keyword ? readPropertyComment(*keyword) : Status::Ok;
    if (!keyword) fault("Error reading comment\n");
    if (status != Status::Ok) return status;
  } else if (current_ == '.') {
    const auto keyword = word();
    if (!keyword) {
      fault("Error reading comment\n");
    } else if (equalNoCase(*keyword, "phase") && file_.count(NameKind::Output) != 0) {
      readPhase(true);
    }
  }
  skipRestOfLine();
  return Status::Ok;
}

Status PlaReader::readPropertyComment(std::string_view word) {
  if (equalNoCase(word, "PINS") || word.starts_with("PIN")) return readDeclaration(NameKind::Pin);
  if (equalNoCase(word, "NODES") || word.starts_with("NOD")) return readDeclaration(NameKind::Node);
  if (equalNoCase(word, "FLIPFLOPS")) {
    // Nothing reads this list any further, so a fault in it only earns its message.
    readDeclaration(NameKind::Flipflop);
    return Status::Ok;
  }
  if (equalNoCase(word, "STATEBITS")) {
    readStateBits();
    return Status::Ok;
  }
  for (std::size_t i = 0; i < propertyWords.size(); ++i) {
    if (!equalNoCase(word, propertyWords[i])) continue;
    appendProperty(i);
    return Status::Ok;
  }
  console_.out << "#$ " << word << " is not recognized\n";
  return Status::Ok;
}

void PlaReader::appendProperty(std::size_t index) {
  std::string& slot = file_.properties[index];
  if (!slot.empty()) slot += '\n';
  slot.append("#$ ").append(propertyWords[index]).append(" ");
  slot += source_.restOfLine(maxPropertyText);
}

Status PlaReader::readDeclaration(NameKind kind) {
  const std::string_view title = declarationTitle(kind);
  const auto n = source_.integer();
  if (!isCount(n)) return fault("Error reading " + std::string(title) + "\n");
  PlaFile::NameTable& table = file_.table(kind);
  table.exists = true;
  const std::string mismatch = "Number of names mis-matched in " + std::string(title) + ".\n";
  const int read = readDeclaredNames(table, *n, title);
  if (read < *n) {
    table.records.resize(static_cast<std::size_t>(table.count));
    return read < 0 ? Status::Fatal : fault(mismatch);
  }
  table.count += *n;
  source_.skipSpace();
  const int next = source_.peek();
  if (next != CharSource::end && next < 128 &&
      (isLetter(static_cast<char>(next)) || isDigit(static_cast<char>(next)))) {
    nextCharacter();
    return fault(mismatch);
  }
  current_ = '\n';  // the list ends in front of a fresh directive: nothing is left to skip
  return Status::Ok;
}

/// Reads names up to n, or up to a word that begins a directive. Gives how many, or -1 behind a
/// message if the file ends.
int PlaReader::readDeclaredNames(PlaFile::NameTable& table, int n, std::string_view title) {
  for (int i = 0; i < n; ++i) {
    const auto name = word();
    if (!name) {
      fault("Error reading names in " + std::string(title) + "\n");
      return -1;
    }
    if (name->front() == '.' || name->front() == '#') return i;
    table.records.push_back(PlaName::parse(*name, console_));
  }
  return n;
}

void PlaReader::readStateBits() {
  const auto n = source_.integer();
  if (!isCount(n)) {
    fault("Error reading number of StateBits names\n");
    return;
  }
  if (source_.peek() == CharSource::end) fault("Error reading input names in #$ STATEBITS.\n");
  const std::string line = source_.restOfLine(maxStateBitsLine);
  StateBits group{*n, {}};
  group.names = splitWords(line);
  const auto expected = static_cast<std::size_t>(*n);
  const bool mismatch = group.names.size() != expected;
  if (group.names.size() > expected) group.names.resize(expected);
  if (mismatch) {
    fault("Number of bits mis-matched in #$ STATEBITS.\n");
  }
  file_.stateBits.push_back(std::move(group));
}

Status PlaReader::readDotCommand() {
  const int next = source_.peek();
  if (next != CharSource::end && isSpace(static_cast<char>(next))) {
    console_.err << "Warning, no pla command follows '.'\n";
    skipRestOfLine();
    return Status::Ok;
  }
  const auto keyword = word();
  const Status status =
      keyword ? dispatchDotCommand(*keyword) : fault("Error reading dot commands\n");
  skipRestOfLine();
  return status;
}

Status PlaReader::dispatchDotCommand(std::string_view word) {
  if (equalNoCase(word, "ilb")) {
    return readColumnNames(NameKind::Input, "Error reading input names in .ilb\n",
                           "Number of inputs mis-matched in .ilb\n");
  }
  if (equalNoCase(word, "i")) return readCount('i', file_.table(NameKind::Input).count, maxCount);
  if (equalNoCase(word, "ob")) {
    return readColumnNames(NameKind::Output, "Error reading output names in .ob\n",
                           "Number of outputs mis-matched in .o\n");
  }
  if (equalNoCase(word, "o")) return readCount('o', file_.table(NameKind::Output).count, maxCount);
  if (equalNoCase(word, "phase")) readPhase(false);
  if (equalNoCase(word, "p")) {
    return readCount('p', file_.termCapacity, std::numeric_limits<int>::max());
  }
  if (equalNoCase(word, "type")) return readType();
  return Status::Ok;
}

Status PlaReader::readCount(char letter, int& target, int limit) {
  if (target != 0) {
    console_.err << "Extra ." << letter << " ignored\n";
    return Status::Ok;
  }
  const auto n = source_.integer();
  if (!n || *n < 0 || *n > limit) {
    console_.err << "Error reading number in ." << letter << "\n";
    return Status::Fatal;
  }
  target = *n;
  return Status::Ok;
}

Status PlaReader::readType() {
  static constexpr std::array<std::pair<std::string_view, PlaType>, 4> types = {
      {{"f", PlaType::f}, {"fd", PlaType::fd}, {"fr", PlaType::fr}, {"fdr", PlaType::fdr}}};
  file_.type = PlaType::f;
  const auto value = word();
  if (!value) return fault("Error reading type in .type\n");
  const auto known = std::find_if(types.begin(), types.end(), [&](const auto& entry) {
    return equalNoCase(entry.first, *value);
  });
  if (known == types.end()) {
    console_.err << "Unsupported value '" << *value << "' in .type";
  } else {
    file_.type = known->second;
  }
  return Status::Ok;
}

Status PlaReader::readColumnNames(NameKind kind, std::string_view wordFault,
                                  std::string_view countFault) {
  PlaFile::NameTable& table = file_.table(kind);
  table.exists = true;
  std::optional<int>& capacity = capacity_[static_cast<std::size_t>(kind)];
  if (!capacity) capacity = table.count;
  Status status = Status::Ok;
  for (int i = 0; i < table.count; ++i) {
    const auto name = word();
    if (!name) {
      status = fault(wordFault);
      continue;
    }
    if (name->front() == '.') return fault(countFault);
    PlaName record = PlaName::parse(*name, console_);
    const auto index = static_cast<std::size_t>(i);
    if (index < table.records.size()) {
      table.records[index] = std::move(record);
    } else if (i < *capacity) {
      table.records.push_back(std::move(record));
    }
  }
  return status;
}

void PlaReader::readPhase(bool isComment) {
  nextCharacter();
  const int outputs = file_.count(NameKind::Output);
  if (outputs == 0) fault("no outputs found in PLA. (.o must be declared before .phase)\n");
  std::optional<std::string>& target = isComment ? file_.commentPhase : file_.phase;
  if (target) {
    console_.out << (isComment ? "Extra #.phase ignored\n" : "Extra .phase ignored\n");
    return;
  }
  target.emplace();
  for (int i = 0; i < outputs; ++i) {
    skipBlanks();
    *target += static_cast<char>(current_);
    nextCharacter();
  }
}

void PlaReader::skipBlanks() {
  while (current_ == ' ' || current_ == '|' || current_ == '\t' || current_ == '\n') {
    if (current_ == '\n') console_.err << "product term spans more than one line\n";
    nextCharacter();
  }
}

/// Makes empty row tables at the present counts, in front of the first row.
Status PlaReader::allocateRows() {
  if (checkColumns(file_, console_) != Status::Ok) return Status::Fatal;
  const int inputs = file_.count(NameKind::Input);
  const int outputs = file_.count(NameKind::Output);
  if (file_.termCapacity == 0) {
    file_.termCapacity = static_cast<int>(
        std::min<std::int64_t>(std::int64_t{inputs} * outputs, std::numeric_limits<int>::max()));
  }
  file_.inputRows = RowTable(static_cast<std::size_t>(inputs), '-');
  file_.outputRows = RowTable(static_cast<std::size_t>(outputs), '~');
  return Status::Ok;
}

Status PlaReader::readTerm() {
  if (file_.termCount == 0) {
    if (allocateRows() != Status::Ok) return Status::Fatal;
    if (!file_.phase)
      file_.phase.emplace(static_cast<std::size_t>(file_.count(NameKind::Output)), '1');
  }
  if (file_.termCount >= file_.termCapacity) {
    return fault("Number of terms greater than .p field\n");
  }
  readInputPart();
  readOutputPart();
  ++file_.termCount;
  assert(file_.inputRows.size() == file_.outputRows.size());
  skipRestOfLine();
  return Status::Ok;
}

void PlaReader::readInputPart() {
  if (!file_.table(NameKind::Input).exists) return file_.inputRows.appendBlank();
  const std::span<char> row = file_.inputRows.append();
  for (std::size_t i = 0; i < row.size(); ++i) {
    row[i] = storedInput(current_);
    nextCharacter();
    skipBlanks();
  }
}

void PlaReader::readOutputPart() {
  PlaFile::NameTable& names = file_.table(NameKind::Output);
  if (!names.exists) return file_.outputRows.appendBlank();
  const std::span<char> row = file_.outputRows.append();
  for (std::size_t j = 0; j < row.size(); ++j) {
    skipBlanks();
    row[j] = storedOutput(current_, file_.type);
    if (j < names.records.size()) {
      if (row[j] == '1') ++names.records[j].onTerms;
      if (row[j] == '0') ++names.records[j].offTerms;
    }
    nextCharacter();
  }
}

}  // namespace ostrel
