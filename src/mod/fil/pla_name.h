// One name word of a PLA file, taken apart.
//
// A name carries, packed behind its base, which function of the signal a column stands for and
// how: `Q3.D:14` is the D input of Q3 at pin 14, `Y-` is Y inverted, `A.D.X1` the left half of an
// exclusive-or, `OUT:REG_T` declares a T register, `F%` carries the inversion mark.
#pragma once

#include <string>
#include <string_view>

#include "fil/console.h"
#include "fil/pla_tables.h"

namespace ostrel {

enum class XorHalf : unsigned char { None, Left, Right };

/// The mark behind a name. Only Inverted inverts; Positive says so and does nothing.
enum class Polarity : unsigned char { None, Inverted, Positive };

enum class NameFormat : unsigned char { WithPin, WithoutPin };

struct PlaName {
  static constexpr std::size_t maxBaseLength = 150;

  std::string base;  ///< in the case of the file, at most maxBaseLength characters
  Extension extension = Extension::None;
  XorHalf xorHalf = XorHalf::None;
  Polarity polarity = Polarity::None;
  int pin = 0;       ///< 0 for none
  int onTerms = 0;   ///< of an output column that was read: rows with 1
  int offTerms = 0;  ///< rows with 0
  RegisterType registerType = RegisterType::None;
  bool percent = false;  ///< the word carries the inversion mark '%'

  /// Takes a word apart. Every fault earns a line on the console, and the record is filled as far
  /// as the word could be read.
  static PlaName parse(std::string_view word, const Console& console);

  /// The word again: base, extension, half, polarity and, if wanted, the pin number. Neither the
  /// register type nor the percent mark is part of it.
  std::string format(NameFormat format) const;
};

}  // namespace ostrel
