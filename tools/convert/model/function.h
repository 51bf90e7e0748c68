// A function as lists of cubes over a few nets.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "minimizer/cube_list.h"
#include "minimizer/effort.h"

namespace ostrel::convert {

/// The number of a net in its netlist.
using Net = std::uint32_t;

/// What the second list of a sum says of its points.
enum class Second : std::uint8_t {
  Open,  ///< they don't matter unless the first list has them; whatever neither has is 0
  Zero   ///< the function is 0 there; what neither list has, or both have, doesn't matter
};

/// One sum of products, by column.
struct Sum {
  CubeList on;
  CubeList second;
  Second secondIs = Second::Open;
  bool inverted = false;

  /// Every point is 0 or 1, as far as the form shows.
  bool isComplete() const { return secondIs == Second::Open && second.empty(); }
};

/// The exclusive OR of sums, which share their columns: one, or the two halves of a pair.
struct Function {
  std::vector<Net> inputs;  ///< by column
  std::vector<Sum> operands;

  bool isComplete() const;
};

Function constantFunction(bool value);
Function literalFunction(Net net, bool positive = true);

/// The net and its sense if the function is a literal and nothing else.
struct NetLiteral {
  Net net;
  bool positive;
};
std::optional<NetLiteral> asLiteral(const Function& function);

/// The value if the function is a constant by its form: a sum without cubes or of one empty cube.
std::optional<bool> asConstant(const Function& function);

/// The number of cubes that the operands list.
std::size_t termCount(const Function& function);

/// The two lists that say all: where a function is 1, where it is 0. What neither has is open.
struct TwoRail {
  std::vector<Net> inputs;
  CubeList on;
  CubeList off;
  bool isComplete = true;
};

/// None where the effort is not enough.
std::optional<TwoRail> twoRail(const Function& function, Effort& effort);

/// Appends the products of each cube of one list with each of the other.
void addProducts(const CubeList& a, const CubeList& b, CubeList& result);

/// The shorter list of a complete function, with a mark if that is the OFF set and `canInvert`;
/// both lists of another one.
Function fromTwoRail(TwoRail rails, bool canInvert);

/// The complement of a list; none if the effort is not enough.
std::optional<CubeList> complementOf(const CubeList& list, std::size_t width, Effort& effort);

/// Drops the columns that no cube reads.
void dropUnreadInputs(Function& function);

}  // namespace ostrel::convert
