#include "convert/model/function.h"

#include <algorithm>
#include <utility>

#include "minimizer/column_map.h"
#include "minimizer/sum_of_products.h"

namespace ostrel::convert {

namespace {

CubeList everywhere() {
  return {Cube()};
}

}  // namespace

bool Function::isComplete() const {
  return std::ranges::all_of(operands, [](const Sum& sum) { return sum.isComplete(); });
}

Function constantFunction(bool value) {
  Function function;
  function.operands.emplace_back();
  if (value) function.operands[0].on = everywhere();
  return function;
}

Function literalFunction(Net net, bool positive) {
  Function function = constantFunction(true);
  function.inputs.push_back(net);
  function.operands[0].on[0].set(0, positive ? '1' : '0');
  return function;
}

std::optional<NetLiteral> asLiteral(const Function& function) {
  if (function.operands.size() != 1 || !function.operands[0].isComplete()) return std::nullopt;
  const Sum& sum = function.operands[0];
  if (sum.on.empty() || sum.on[0].literalCount() != 1) return std::nullopt;
  if (!std::ranges::all_of(sum.on, [&](const Cube& cube) { return cube == sum.on[0]; })) {
    return std::nullopt;
  }
  std::optional<NetLiteral> result;
  sum.on[0].forEachLiteral([&](std::size_t column, char literal) {
    result = NetLiteral{function.inputs[column], (literal == '1') != sum.inverted};
  });
  return result;
}

std::optional<bool> asConstant(const Function& function) {
  bool value = false;
  for (const Sum& sum : function.operands) {
    const bool isOne =
        std::ranges::any_of(sum.on, [](const Cube& cube) { return cube.literalCount() == 0; });
    if (!sum.isComplete() || (!isOne && !sum.on.empty())) return std::nullopt;
    value = value != (isOne != sum.inverted);
  }
  return value;
}

std::size_t termCount(const Function& function) {
  std::size_t count = 0;
  for (const Sum& sum : function.operands) count += sum.on.size();
  return count;
}

std::optional<CubeList> complementOf(const CubeList& list, std::size_t width, Effort& effort) {
  if (list.empty()) return everywhere();
  CubeList result = list;
  if (!complementList(result, width, effort)) return std::nullopt;
  return result;
}

void addProducts(const CubeList& a, const CubeList& b, CubeList& result) {
  for (const Cube& x : a) {
    for (const Cube& y : b) {
      if (std::optional<Cube> product = intersectCubes(x, y)) {
        result.push_back(*std::move(product));
      }
    }
  }
}

namespace {

std::optional<TwoRail> twoRail(const std::vector<Net>& inputs, const Sum& sum, Effort& effort) {
  TwoRail rails{inputs, sum.on, sum.second, sum.isComplete()};
  if (sum.secondIs == Second::Open) {
    CubeList known = sum.on;
    known.insert(known.end(), sum.second.begin(), sum.second.end());
    std::optional<CubeList> off = complementOf(known, inputs.size(), effort);
    if (!off) return std::nullopt;
    rails.off = *std::move(off);
  } else {
    ListAlgebra<Cube> algebra(inputs.size(), effort);
    if (!algebra.sharp(rails.on, sum.second)) return std::nullopt;
    if (!algebra.sharp(rails.off, sum.on)) return std::nullopt;
  }
  if (sum.inverted) std::swap(rails.on, rails.off);
  return rails;
}

}  // namespace

std::optional<TwoRail> twoRail(const Function& function, Effort& effort) {
  TwoRail result{function.inputs, {}, everywhere(), true};
  ListAlgebra<Cube> algebra(function.inputs.size(), effort);
  for (const Sum& sum : function.operands) {
    std::optional<TwoRail> next = twoRail(function.inputs, sum, effort);
    if (!next) return std::nullopt;
    if (&sum == &function.operands.front()) {
      result = *std::move(next);
      continue;
    }
    const std::size_t products =
        (result.on.size() + result.off.size()) * (next->on.size() + next->off.size());
    if (!effort.spend(products)) return std::nullopt;
    TwoRail both{function.inputs, {}, {}, result.isComplete && next->isComplete};
    addProducts(result.on, next->off, both.on);
    addProducts(result.off, next->on, both.on);
    addProducts(result.on, next->on, both.off);
    addProducts(result.off, next->off, both.off);
    if (!algebra.simplify(both.on) || !algebra.simplify(both.off)) {
      return std::nullopt;
    }
    result = std::move(both);
  }
  return result;
}

Function fromTwoRail(TwoRail rails, bool canInvert) {
  Function function;
  Sum& sum = function.operands.emplace_back();
  function.inputs = std::move(rails.inputs);
  if (!rails.isComplete) {
    sum.secondIs = Second::Zero;
    sum.second = std::move(rails.off);
  } else if (canInvert && rails.off.size() < rails.on.size()) {
    sum.inverted = true;
    std::swap(rails.on, rails.off);
  }
  sum.on = std::move(rails.on);
  dropUnreadInputs(function);
  return function;
}

void dropUnreadInputs(Function& function) {
  std::vector<bool> isRead(function.inputs.size(), false);
  for (const Sum& sum : function.operands) {
    for (const CubeList* list : {&sum.on, &sum.second}) {
      for (const Cube& cube : *list) {
        cube.forEachLiteral([&](std::size_t column, char) { isRead[column] = true; });
      }
    }
  }
  std::vector<std::uint32_t> places(function.inputs.size(), 0);
  std::vector<Net> inputs;
  for (std::size_t i = 0; i < isRead.size(); ++i) {
    if (!isRead[i]) continue;
    places[i] = static_cast<std::uint32_t>(inputs.size());
    inputs.push_back(function.inputs[i]);
  }
  if (inputs.size() == function.inputs.size()) return;
  function.inputs = std::move(inputs);
  for (Sum& sum : function.operands) {
    for (CubeList* list : {&sum.on, &sum.second}) {
      for (Cube& cube : *list) cube = remapCube(cube, places.data());
    }
  }
}

}  // namespace ostrel::convert
