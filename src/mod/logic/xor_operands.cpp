#include "logic/xor_operands.h"

#include <cassert>
#include <optional>
#include <utility>

#include "logic/kept_sets.h"
#include "run/heart.h"
#include "run/options.h"

namespace ostrel {
namespace {

// Stands for the count of a set that isn't there, so that it costs more than any real one; the sum
// of two stays within 32 bits.
constexpr int absentSetCost = 715827882;

int setCost(int count) {
  return count == 0 ? absentSetCost : count;
}

/// The terms of both operands. A side of one term fits the gate: it is worth a whole cluster.
int pairCost(int left, int right) {
  const int cost = left + right;
  return left == 1 || right == 1 ? cost - options().clusterSize : cost;
}

}  // namespace

bool synthesizeXor(Signal& signal) {
  if (signal.slot(SlotXorLeft) != nullptr || signal.slot(SlotXorRight) != nullptr) return true;
  if (signal.polarity == Polarity::Inverted) return false;
  signal.xorTried = true;
  Equation* logic = signal.slot(SlotLogic);
  if (logic == nullptr) return false;
  if (logic->polarity == Polarity::Inverted && !mayInvert(signal)) return false;
  // A function of one or two terms is never decomposed.
  const int terms = logic->termCount(SetSelector::Smaller);
  if (terms < 3) return false;

  heartMsg();
  std::optional<XorOperands> pair = logic->decomposeXor(terms);
  bool takePair = pair.has_value();
  if (takePair) {
    signal.setSlot(SlotXorLeft, std::move(pair->left));
    signal.setSlot(SlotXorRight, std::move(pair->right));
    orderXorPair(signal);
    const int leftCount = signal.slot(SlotXorLeft)->onCount();
    const int rightCount = signal.slot(SlotXorRight)->onCount();
    // An operand without a term would not be written, and the function with it.
    takePair = leftCount > 0 && rightCount > 0 && terms > leftCount + rightCount;
  }
  if (!takePair) {
    signal.deleteSlot(SlotXorLeft);
    signal.deleteSlot(SlotXorRight);
    return false;
  }
  signal.slot(SlotXorLeft)->extension = signal.slot(SlotXorRight)->extension = logic->extension;
  signal.deleteSlot(SlotLogic);
  assert(signal.hasXorPair());
  return true;
}

void orderXorPair(Signal& signal) {
  if (!signal.hasXorPair()) return;
  Equation* left = signal.slot(SlotXorLeft);
  Equation* right = signal.slot(SlotXorRight);
  for (Equation* operand : {left, right}) {
    if (!operand->onSet().empty() || operand->reduce(SetSelector::Both)) continue;
    operand->swapSets();  // too complex for a complement: the operand takes the inversion along
    operand->togglePolarity();
  }
  int leftCost = setCost(left->onCount());
  int rightCost = setCost(right->onCount());
  const int leftOffCost = setCost(left->offCount());
  const int rightOffCost = setCost(right->offCount());
  if (pairCost(leftOffCost, rightOffCost) < pairCost(leftCost, rightCost)) {
    left->swapSets();  // the exclusive OR of two complements is that of the functions
    right->swapSets();
    leftCost = leftOffCost;
    rightCost = rightOffCost;
  }
  const bool rightIsConstant = right->isConstant(Constant::Either);
  if (leftCost == 1 && !rightIsConstant) return;
  if (rightIsConstant || rightCost == 1 || leftCost < rightCost) {
    signal.swapSlots(SlotXorLeft, SlotXorRight);
  }
}

}  // namespace ostrel
