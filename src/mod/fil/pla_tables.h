// The fixed tables of words of the PLA format: DOT extensions, register types, property words.
// Other modules refer to a word by its code; the texts stand here alone.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace ostrel {

/// What a column stands for: the word behind the dot of a name.
enum class Extension : unsigned char {
  None,
  OE,
  RE,
  PR,
  AR,
  AP,
  SR,
  SP,
  C,
  S,
  R,
  J,
  K,
  D,
  T,
  Q,
  FC,
  L,
  LD,
  CE,
  LE,
  LH,
  PIN,
  FB,
  REG,
  CP,
  X1,
  X2,
  STATE,
  ASYNC,
  SYNC,
  BLIF,
  SET,
  CLR,
  ASET,
  ACLR,
  COM,
  XORR_T,
  XORL_T,
  XORR_LE,
  XORL_LE,
  XORR_REG,
  XORL_REG,
  XORR,
  XORL,
  End,  ///< no extension: marks an Equation that no column was read into
};

/// The text with its dot, empty for None.
std::string_view extensionText(Extension extension);

/// The code of an upper-case text with its dot; none for a text that is no extension.
std::optional<Extension> findExtension(std::string_view text);

enum class RegisterType : unsigned char { None, COM, REG_D, REG_T, REG_SR, REG_JK, REG_G, REG_L };

/// The code of a register type word, case ignored; none for any other word.
std::optional<RegisterType> findRegisterType(std::string_view word);

/// The property words in the order in which their lines are written.
inline constexpr std::array<std::string_view, 27> propertyWords = {
    "TOOL",     "DATE",      "DEVICE",   "JED_FILE", "JEDECFILE", "VECFILE",     "VECTORFILE",
    "AUXPLA",   "ONEHOTPLA", "MODULE",   "STATE",    "FUSEFILE",  "COMMAND",     "TITLE",
    "PROPERTY", "PATTERN",   "REVISION", "AUTHOR",   "COMPANY",   "CHIP",        "DEVNAME",
    "GROUP",    "XREFILE",   "XREF",     "FILENAME", "SIGNATURE", "STATEMACHINE"};
inline constexpr std::size_t propertyDate = 1;
inline constexpr std::size_t propertyModule = 9;

}  // namespace ostrel
