// Which slot an output column fills, and which register type that makes: a table by extension.
//
// Example: on a Signal without a type, `.AR` fills the reset and makes an SR register of it; a `.D`
// that follows fills the main function and makes it a D register. The other way round the `.AR`
// finds a D register, which has a reset of its own, and the type stays.
#include "logic/columns.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "run/log.h"

namespace ostrel {
namespace {

/// How the register type follows from a column.
enum class TypeRule : unsigned char {
  Keep,
  Combinatorial,
  Data,  ///< a D register, unless it is a latch
  Toggle,
  Latch,
  JK,
  Initialized,  ///< an SR register, unless its type has a reset and a set of its own
  SetReset,     ///< an SR register
};

struct ColumnRule {
  Extension extension;
  std::optional<Slot> slot;  // none: no output column may have the extension
  TypeRule type;
};

constexpr std::array<ColumnRule, 32> columnRules = {{
    {Extension::None, SlotLogic, TypeRule::Combinatorial},
    {Extension::PIN, SlotLogic, TypeRule::Combinatorial},
    {Extension::COM, SlotLogic, TypeRule::Combinatorial},
    {Extension::D, SlotLogic, TypeRule::Data},
    {Extension::Q, SlotLogic, TypeRule::Data},
    {Extension::FB, SlotLogic, TypeRule::Data},
    {Extension::REG, SlotLogic, TypeRule::Data},
    {Extension::T, SlotLogic, TypeRule::Toggle},
    {Extension::L, SlotLogic, TypeRule::Latch},
    {Extension::X1, SlotXorLeft, TypeRule::Keep},
    {Extension::X2, SlotXorRight, TypeRule::Keep},
    {Extension::C, SlotClock, TypeRule::Keep},
    {Extension::CP, SlotClock, TypeRule::Keep},
    {Extension::LE, SlotClock, TypeRule::Latch},
    {Extension::LH, SlotClock, TypeRule::Latch},
    {Extension::CE, SlotClockEnable, TypeRule::Keep},
    {Extension::RE, SlotReset, TypeRule::Initialized},
    {Extension::AR, SlotReset, TypeRule::Initialized},
    {Extension::SR, SlotReset, TypeRule::Initialized},
    {Extension::ASYNC, SlotReset, TypeRule::Initialized},
    {Extension::SYNC, SlotReset, TypeRule::Initialized},
    {Extension::CLR, SlotReset, TypeRule::Initialized},
    {Extension::ACLR, SlotReset, TypeRule::Initialized},
    {Extension::R, SlotReset, TypeRule::SetReset},
    {Extension::PR, SlotSet, TypeRule::Initialized},
    {Extension::AP, SlotSet, TypeRule::Initialized},
    {Extension::SP, SlotSet, TypeRule::Initialized},
    {Extension::SET, SlotSet, TypeRule::Initialized},
    {Extension::ASET, SlotSet, TypeRule::Initialized},
    {Extension::S, SlotSet, TypeRule::SetReset},
    {Extension::OE, SlotOutputEnable, TypeRule::Keep},
    {Extension::J, std::nullopt, TypeRule::JK},
}};

ColumnRule ruleOf(Extension extension) {
  if (extension == Extension::K) extension = Extension::J;
  const auto* const rule = std::ranges::find(columnRules, extension, &ColumnRule::extension);
  return rule != columnRules.end() ? *rule : ColumnRule{extension, std::nullopt, TypeRule::Keep};
}

/// The register type afterwards, none for a conflict with the present one.
std::optional<RegisterType> typeAfter(TypeRule rule, RegisterType present) {
  using R = RegisterType;
  const auto isOneOf = [present](auto... types) { return ((present == types) || ...); };
  switch (rule) {
    case TypeRule::Keep:
      return present;
    case TypeRule::Combinatorial:
      return R::COM;
    case TypeRule::Data:
      if (present == R::REG_L) return present;
      if (isOneOf(R::None, R::COM, R::REG_D, R::REG_SR)) return R::REG_D;
      return std::nullopt;
    case TypeRule::Toggle:
      return R::REG_T;
    case TypeRule::Latch:
      return R::REG_L;
    case TypeRule::JK:
      return R::REG_JK;
    case TypeRule::Initialized:
      return isOneOf(R::COM, R::REG_D, R::REG_T, R::REG_L) ? present : R::REG_SR;
    case TypeRule::SetReset:
      if (isOneOf(R::None, R::COM, R::REG_SR)) return R::REG_SR;
      return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace

std::optional<RegisterType> typeOfColumn(Extension extension, RegisterType present) {
  return typeAfter(ruleOf(extension).type, present);
}

Status readColumn(Signal& signal, const PlaFile& file, int column, ColumnSets sets) {
  const PlaName& columnName = file.name(NameKind::Output, column);
  const ColumnRule rule = ruleOf(columnName.extension);
  const std::optional<RegisterType> type = typeAfter(rule.type, signal.registerType);
  if (!type) {
    error({signal.name, " has assigned multiple register types"});
    return Status::Failed;
  }
  signal.registerType = *type;
  const std::string_view extension = extensionText(columnName.extension);
  if (!rule.slot) {
    error({signal.name, extension, " is not supported"});
    return Status::Fatal;
  }
  Slot target = *rule.slot;
  if (columnName.xorHalf == XorHalf::Left) target = SlotXorLeft;
  if (columnName.xorHalf == XorHalf::Right) target = SlotXorRight;
  if (signal.slot(target) != nullptr) {
    error({signal.name, extension, " conflict with an equation previously defined"});
    return Status::Fatal;
  }
  return signal.makeEquation(target).readColumn(file, column, std::move(sets));
}

Status checkLogic(Signal& signal) {
  if (signal.slot(SlotLogic) != nullptr || signal.slot(SlotXorLeft) != nullptr) return Status::Ok;
  const Equation* enable = signal.slot(SlotOutputEnable);
  if (enable != nullptr && enable->isConstant(Constant::Zero)) {
    signal.deleteSlot(SlotOutputEnable);
    enable = nullptr;
  }
  if (signal.slot(SlotClock) == nullptr && enable == nullptr) return Status::Ok;
  error({signal.name, " is missing logic function"});
  return Status::Fatal;
}

}  // namespace ostrel
