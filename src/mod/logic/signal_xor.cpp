// Whether a Signal's function becomes an exclusive-or pair, and how the pair is laid out.
//
// Until the very end the left operand is the place of a single term: devices feed one product term
// into the exclusive-or gate.
#include "logic/signal.h"
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

bool Signal::synthesizeXor() {
  if (slot(SlotXorLeft) != nullptr || slot(SlotXorRight) != nullptr) return true;
  if (polarity == Polarity::Inverted) return false;
  xorTried = true;
  Equation* logic = slot(SlotLogic);
  if (logic == nullptr) return false;
  // A function of one or two terms is never decomposed.
  const int terms = logic->termCount(SetSelector::Smaller);
  if (terms < 3) return false;

  heartMsg();
  bool takePair = logic->decomposeXor(terms, slots_[SlotXorLeft], slots_[SlotXorRight]);
  if (takePair) {
    orderXorPair();
    const int left = slot(SlotXorLeft)->onCount();
    const int right = slot(SlotXorRight)->onCount();
    // An operand without a term would not be written, and the function with it.
    takePair = left > 0 && right > 0 && terms > left + right;
  }
  if (!takePair) {
    deleteSlot(SlotXorLeft);
    deleteSlot(SlotXorRight);
    return false;
  }
  slot(SlotXorLeft)->extension = slot(SlotXorRight)->extension = logic->extension;
  deleteSlot(SlotLogic);
  return true;
}

void Signal::orderXorPair() {
  if (!hasXorPair()) return;
  Equation* left = slot(SlotXorLeft);
  Equation* right = slot(SlotXorRight);
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
    swapSlots(SlotXorLeft, SlotXorRight);
  }
}

}  // namespace ostrel
