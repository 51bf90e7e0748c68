#include "verify/check/strict_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <optional>
#include <sstream>
#include <unordered_map>

#include "fil/pla_name.h"
#include "fil/text.h"

namespace ostrel::verify {

namespace {

// A count or a list of names that some line announced.
struct Announced {
  std::string word;
  std::size_t line = 0;  // 0: not there
  std::size_t count = 0;
};

struct ListedName {
  std::string word;
  std::string base;
  std::size_t line = 0;
  bool isUsed = false;
};

struct List {
  Announced announced;  // for columns, by .i and .o
  std::vector<ListedName> names;
  bool isThere = false;
};

struct Spelling {
  std::string base;
  std::size_t line = 0;
};

class StrictReader {
 public:
  explicit StrictReader(std::string_view text) : text_(text) {}

  std::vector<Complaint> run() {
    if (const std::size_t nul = text_.find('\0'); nul != std::string_view::npos) {
      text_ = text_.substr(0, nul);
      isCutByNul_ = true;
    }
    while (!text_.empty()) {
      const std::size_t end = std::min(text_.find('\n'), text_.size());
      ++line_;
      readLine(text_.substr(0, end));
      text_.remove_prefix(std::min(end + 1, text_.size()));
    }
    finish();
    std::ranges::stable_sort(complaints_, {}, &Complaint::line);
    return std::move(complaints_);
  }

 private:
  void complain(std::string text, std::size_t line = 0) {
    complaints_.push_back({line == 0 ? line_ : line, std::move(text), false});
  }

  void readLine(std::string_view line) {
    const std::vector<std::string> words = splitWords(line);
    if (words.empty()) return;
    const std::string& first = words.front();
    const bool isDirective = first.front() == '#' || first.front() == '.';
    if (open_ != nullptr && !isDirective) return readNames(words, 0);
    closeList();
    if (end_ != 0 && first.front() != '#') complain("behind .end, which ends nothing: it is read");
    if (first.starts_with("#$") || first.starts_with("#KOL")) return readProperty(line, words);
    if (first.front() == '#') return;
    if (first.front() == '.') return readDirective(words);
    if (std::string_view("012-").find(first.front()) != std::string_view::npos) {
      return readRow(line);
    }
    complain("text that is passed over: " + first);
  }

  // `#$ PINS 3 ...`; the mark and the word may touch.
  void readProperty(std::string_view line, const std::vector<std::string>& words) {
    const std::size_t mark = words.front().starts_with("#$") ? 2 : 4;
    const std::vector<std::string> rest = splitWords(line.substr(line.find('#') + mark));
    if (rest.empty()) return complain("nothing stands behind the mark");
    const std::string& word = rest.front();
    for (auto& [name, list] : {std::pair{"PINS", &pins_}, std::pair{"NODES", &nodes_}}) {
      if (!equalNoCase(word, name)) continue;
      const auto count = rest.size() > 1 ? number(rest[1]) : std::nullopt;
      if (!count) return complain("no number behind " + word);
      list->announced = {word, line_, list->announced.count + *count};
      open_ = list;
      return readNames(rest, 2);
    }
    const bool isKnown = equalNoCase(word, "FLIPFLOPS") || equalNoCase(word, "STATEBITS") ||
                         std::ranges::any_of(propertyWords, [&](std::string_view known) {
                           return equalNoCase(word, known);
                         });
    if (!isKnown) complain("unknown property " + word);
  }

  void readDirective(const std::vector<std::string>& words) {
    const std::string& word = words.front();
    const auto is = [&](const char* text) { return equalNoCase(word, text); };
    if (is(".i")) return readCount(words, inputs_.announced);
    if (is(".o")) return readCount(words, outputs_.announced);
    if (is(".p")) return readCount(words, rows_);
    if (is(".ilb")) return openColumns(words, inputs_);
    if (is(".ob")) return openColumns(words, outputs_);
    if (is(".type")) return readType(words);
    if (is(".phase")) return readPhase(words);
    if (is(".end")) {
      if (end_ == 0) end_ = line_;
      return;
    }
    complain("unknown directive " + word);
  }

  static std::optional<std::size_t> number(const std::string& word) {
    std::size_t value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    const bool isWhole = error == std::errc() && end == word.data() + word.size();
    return isWhole && (word.size() == 1 || word.front() != '0') ? std::optional(value)
                                                                : std::nullopt;
  }

  void readCount(const std::vector<std::string>& words, Announced& target) {
    if (target.line != 0) return complain("a second " + words.front() + " is ignored");
    const auto count = words.size() > 1 ? number(words[1]) : std::nullopt;
    if (!count) return complain("no decimal number behind " + words.front());
    target = {words.front(), line_, *count};
  }

  void openColumns(const std::vector<std::string>& words, List& list) {
    if (list.isThere) complain("a second " + words.front() + " replaces the first");
    if (list.announced.line == 0) complain(words.front() + " stands in front of its number");
    list.names.clear();
    list.isThere = true;
    open_ = &list;
    openLine_ = line_;
    readNames(words, 1);
  }

  void readType(const std::vector<std::string>& words) {
    static constexpr std::array<std::string_view, 4> types = {"f", "fd", "fr", "fdr"};
    const auto known = std::ranges::find_if(types, [&](std::string_view type) {
      return words.size() > 1 && equalNoCase(words[1], type);
    });
    if (known == types.end()) return complain("unknown type, read as f");
    if (rowCount_ > 0) complain("the type changes behind rows");
    isSparse_ = known - types.begin() < 2;
  }

  void readPhase(const std::vector<std::string>& words) {
    std::size_t characters = 0;
    for (std::size_t w = 1; w < words.size(); ++w) characters += words[w].size();
    if (characters != outputs_.announced.count) {
      complain(".phase has " + std::to_string(characters) + " characters, .o says " +
               std::to_string(outputs_.announced.count));
    }
  }

  bool isDeclaration() const { return open_ == &pins_ || open_ == &nodes_; }

  void readNames(const std::vector<std::string>& words, std::size_t first) {
    for (std::size_t w = first; w < words.size(); ++w) readName(words[w]);
    if (isDeclaration() && open_->names.size() >= open_->announced.count) closeList();
  }

  void readName(const std::string& word) {
    std::ostringstream out;
    std::ostringstream err;
    const PlaName name = PlaName::parse(word, {out, err});
    if (word.front() == '!') complain("the ! in " + word + " is ignored");
    if (!err.str().empty()) complain("unknown extension in " + word + ", read as none");
    if (out.str().find("truncated") != std::string::npos) complain(name.base + " is truncated");
    if (name.base.empty()) complain("no name in " + word);
    open_->names.push_back({word, name.base, line_});
    const auto [known, isNew] =
        spellings_.try_emplace(toUpper(name.base), Spelling{name.base, line_});
    if (!isNew && known->second.base != name.base) {
      complain(name.base + " is " + known->second.base + " of line " +
               std::to_string(known->second.line) + " in another spelling");
    }
    if (isDeclaration() && !declared_.try_emplace(toUpper(name.base), line_).second) {
      complain(name.base + " is declared a second time");
    }
  }

  void closeList() {
    if (open_ == nullptr) return;
    const Announced& a = open_->announced;
    if (a.line != 0 && open_->names.size() != a.count) {
      complain(a.word + " says " + std::to_string(a.count) + ", and there are " +
                   std::to_string(open_->names.size()) + " names",
               isDeclaration() ? a.line : openLine_);
    }
    open_ = nullptr;
  }

  void readRow(std::string_view line) {
    const std::size_t inputs = inputs_.announced.count;
    const std::size_t width = inputs + outputs_.announced.count;
    ++rowCount_;
    std::size_t place = 0;
    for (const char c : line.substr(0, line.find('#'))) {
      if (isSpace(c) || c == '|') continue;
      if (place < width) readCharacter(c, place, inputs);
      ++place;
    }
    if (place != width) {
      complain("a row of " + std::to_string(place) + " characters, and .i and .o make " +
               std::to_string(width));
    }
  }

  void readCharacter(char c, std::size_t place, std::size_t inputs) {
    const bool isInput = place < inputs;
    const std::string_view known = isInput ? "01-2" : "01-24~3";
    if (known.find(c) == std::string_view::npos) {
      complain("the character " + std::string(1, c) + " in a row");
    }
    List& list = isInput ? inputs_ : outputs_;
    const std::size_t column = isInput ? place : place - inputs;
    const bool says =
        isInput ? c == '0' || c == '1' : c != '~' && c != '3' && !(isSparse_ && c == '0');
    if (says && column < list.names.size()) list.names[column].isUsed = true;
  }

  void finish() {
    closeList();
    if (isCutByNul_) complain("a NUL character ends the reading");
    if (end_ == 0) complain("the file is cut off: .end is missing");
    if (pins_.announced.line == 0) complain("no pins are declared");
    for (const auto& [word, line] :
         {std::pair{".i", inputs_.announced.line}, std::pair{".o", outputs_.announced.line},
          std::pair{".p", rows_.line}}) {
      if (line == 0) complain(std::string(word) + " is missing");
    }
    if (rows_.line != 0 && rows_.count != rowCount_) {
      complain(".p says " + std::to_string(rows_.count) + ", and there are " +
                   std::to_string(rowCount_) + " rows",
               rows_.line);
    }
    for (const List* list : {&inputs_, &outputs_}) {
      if (!list->isThere) complain(list == &inputs_ ? ".ilb is missing" : ".ob is missing");
      for (const ListedName& column : list->names) checkColumn(column);
    }
  }

  void checkColumn(const ListedName& column) {
    if (!declared_.contains(toUpper(column.base))) {
      complain(column.word + " is not declared", column.line);
    }
    if (column.isUsed) return;
    complain("no row uses " + column.word, column.line);
    complaints_.back().isHarmless = true;
  }

  std::string_view text_;
  std::size_t line_ = 0;
  std::vector<Complaint> complaints_;
  List pins_;
  List nodes_;
  List inputs_;
  List outputs_;
  List* open_ = nullptr;  // whose names may go on in the next line
  std::size_t openLine_ = 0;
  Announced rows_;
  std::size_t rowCount_ = 0;
  std::size_t end_ = 0;   // the line of .end
  bool isSparse_ = true;  // a 0 in the output plane says nothing
  bool isCutByNul_ = false;
  std::map<std::string, Spelling> spellings_;
  std::map<std::string, std::size_t> declared_;
};

}  // namespace

std::vector<Complaint> readStrictly(std::string_view text) {
  return StrictReader(text).run();
}

}  // namespace ostrel::verify
