// Writing a PLA file: the order of the lines and the wrapping of the name lists are part of the
// format that the next tool reads.
#include "fil/pla_writer.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <ostream>

namespace ostrel {
namespace {

constexpr std::size_t wrapColumn = 80;

/// A list of names, each behind one blank, that goes to a new line in front of a name that would
/// pass the wrap column. A percent mark doesn't count for the name in front of it.
class NameList {
 public:
  NameList(std::ostream& stream, std::size_t startColumn) : stream_(stream), column_(startColumn) {}

  void add(const PlaName& name, NameFormat format, bool withPercent) {
    const std::string text = name.format(format);
    if (column_ + text.size() > wrapColumn) {
      stream_ << '\n';
      column_ = 0;
    }
    stream_ << ' ' << text;
    column_ += text.size() + 1;
    if (withPercent && name.percent) {
      stream_ << '%';
      ++column_;
    }
  }

 private:
  std::ostream& stream_;
  std::size_t column_;
};

void writeNames(std::ostream& stream, const PlaFile& file, NameKind kind, std::size_t startColumn,
                NameFormat format) {
  NameList list(stream, startColumn);
  for (const PlaName& name : file.table(kind).records) {
    list.add(name, format, kind == NameKind::Output);
  }
  stream << '\n';
}

void writeProperties(std::ostream& stream, const PlaFile& file, std::string_view date) {
  for (std::size_t i = 0; i < file.properties.size(); ++i) {
    if (!file.properties[i].empty()) {
      stream << file.properties[i] << '\n';
    } else if (i == propertyDate) {
      stream << "#$ DATE " << date << '\n';
    }
  }
}

void writeDeclarations(std::ostream& stream, const PlaFile& file) {
  if (file.count(NameKind::Pin) != 0) {
    stream << "#$ PINS " << file.count(NameKind::Pin);
    writeNames(stream, file, NameKind::Pin, 12, NameFormat::WithPin);
  }
  if (file.count(NameKind::Node) != 0) {
    stream << "#$ NODES " << file.count(NameKind::Node);
    writeNames(stream, file, NameKind::Node, 13, NameFormat::WithPin);
  }
  if (file.count(NameKind::Flipflop) != 0) {
    stream << "#$ FLIPFLOPS " << file.count(NameKind::Flipflop);
    for (const PlaName& name : file.table(NameKind::Flipflop).records) {
      stream << ' ' << name.format(NameFormat::WithoutPin);
    }
    stream << '\n';
  }
  for (const StateBits& group : file.stateBits) {
    stream << "#$ STATEBITS " << group.count;
    for (const std::string& name : group.names) stream << ' ' << name;
    stream << '\n';
  }
}

void writePhase(std::ostream& stream, const PlaFile& file) {
  if (file.phase) stream << ".phase " << *file.phase << '\n';
}

/// Rows go to the file many at a time: a file stream passes each longer one on to the system.
class RowChunk {
 public:
  explicit RowChunk(std::ostream& stream) : stream_(stream) {}

  /// What append(text) appends is a row.
  template <class Append>
  void add(Append append) {
    append(text_);
    text_ += '\n';
    if (text_.size() >= chunkSize) passOn();
  }

  void passOn() {
    stream_ << text_;
    text_.clear();
  }

 private:
  static constexpr std::size_t chunkSize = 1U << 16U;

  std::ostream& stream_;
  std::string text_;
};

/// f and fd say with 0 that a row is silent on a column, and the reader turns that back.
void writeTerms(std::ostream& stream, const PlaFile& file) {
  assert(file.inputRows.size() == file.outputRows.size());
  assert(file.madeInputs.size() == file.madeOutputs.size());
  const bool silentIsZero = file.type == PlaType::f || file.type == PlaType::fd;
  RowChunk chunk(stream);
  for (std::size_t i = 0; i < file.inputRows.size(); ++i) {
    chunk.add([&](std::string& text) {
      text.append(file.inputRows.row(i)).append(1, ' ');
      const auto outputs = static_cast<std::ptrdiff_t>(text.size());
      text += file.outputRows.row(i);
      if (silentIsZero) std::replace(text.begin() + outputs, text.end(), '~', '0');
    });
  }
  const auto inputs = static_cast<std::size_t>(file.count(NameKind::Input));
  const auto outputs = static_cast<std::size_t>(file.count(NameKind::Output));
  for (std::size_t i = 0; i < file.madeInputs.size(); ++i) {
    chunk.add([&](std::string& text) {
      file.madeInputs.appendText(i, inputs, '-', text);
      text += ' ';
      file.madeOutputs.appendText(i, outputs, silentIsZero ? '0' : '~', text);
    });
  }
  chunk.passOn();
}

}  // namespace

void writePla(const PlaFile& file, std::ostream& stream, std::string_view date) {
  static constexpr std::array<std::string_view, 4> typeWords = {"f", "fd", "fr", "fdr"};
  writeProperties(stream, file, date);
  writeDeclarations(stream, file);
  stream << ".type " << typeWords[static_cast<std::size_t>(file.type)] << '\n';
  stream << ".i " << file.count(NameKind::Input) << "\n.o " << file.count(NameKind::Output) << '\n';
  if (file.table(NameKind::Input).exists) {
    stream << ".ilb";
    writeNames(stream, file, NameKind::Input, 5, NameFormat::WithoutPin);
  }
  if (file.table(NameKind::Output).exists) {
    stream << ".ob";
    writeNames(stream, file, NameKind::Output, 4, NameFormat::WithoutPin);
  }
  writePhase(stream, file);
  stream << ".p " << file.termCount << '\n';
  writeTerms(stream, file);
  stream << ".end\n";
}

}  // namespace ostrel
