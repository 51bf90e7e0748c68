#include "fil/pla_tables.h"

#include "fil/text.h"

namespace ostrel {
namespace {

constexpr std::array<std::string_view, static_cast<std::size_t>(Extension::End)> extensionTexts = {
    "",         ".OE",       ".RE",       ".PR",   ".AR",    ".AP",     ".SR",     ".SP",
    ".C",       ".S",        ".R",        ".J",    ".K",     ".D",      ".T",      ".Q",
    ".FC",      ".L",        ".LD",       ".CE",   ".LE",    ".LH",     ".PIN",    ".FB",
    ".REG",     ".CP",       ".X1",       ".X2",   ".STATE", ".ASYNC",  ".SYNC",   ".BLIF",
    ".SET",     ".CLR",      ".ASET",     ".ACLR", ".COM",   ".XORR_T", ".XORL_T", ".XORR_LE",
    ".XORL_LE", ".XORR_REG", ".XORL_REG", ".XORR", ".XORL"};

constexpr std::array<std::string_view, 8> registerTypeTexts = {
    "", "COM", "REG_D", "REG_T", "REG_SR", "REG_JK", "REG_G", "REG_L"};

}  // namespace

std::string_view extensionText(Extension extension) {
  const auto index = static_cast<std::size_t>(extension);
  return index < extensionTexts.size() ? extensionTexts[index] : "._END_";
}

std::optional<Extension> findExtension(std::string_view text) {
  for (std::size_t i = 0; i < extensionTexts.size(); ++i) {
    if (extensionTexts[i] == text) return static_cast<Extension>(i);
  }
  return std::nullopt;
}

std::optional<RegisterType> findRegisterType(std::string_view word) {
  for (std::size_t i = 1; i < registerTypeTexts.size(); ++i) {
    if (equalNoCase(registerTypeTexts[i], word)) return static_cast<RegisterType>(i);
  }
  return std::nullopt;
}

}  // namespace ostrel
