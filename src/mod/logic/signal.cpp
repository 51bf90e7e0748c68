#include "logic/signal.h"

#include <algorithm>

#include "logic/input_column.h"
#include "run/log.h"

namespace ostrel {
namespace {

/// What an extension asks for: a slot, and how the register type follows. No slot for an
/// extension that no output column may have.
struct ColumnRule {
  std::optional<Slot> slot;
  std::optional<RegisterType> registerType;  // the type afterwards, none for a conflict
};

/// The type of a register with one of the plain data extensions.
std::optional<RegisterType> dataType(RegisterType present) {
  switch (present) {
    case RegisterType::REG_L:
      return RegisterType::REG_L;
    case RegisterType::None:
    case RegisterType::COM:
    case RegisterType::REG_D:
    case RegisterType::REG_SR:
      return RegisterType::REG_D;
    default:
      return std::nullopt;
  }
}

/// The type with a reset or set function that other registers can have too.
RegisterType initializedType(RegisterType present) {
  switch (present) {
    case RegisterType::COM:
    case RegisterType::REG_D:
    case RegisterType::REG_T:
    case RegisterType::REG_L:
      return present;
    default:
      return RegisterType::REG_SR;
  }
}

/// The type with the R or S input of an SR register.
std::optional<RegisterType> setResetType(RegisterType present) {
  switch (present) {
    case RegisterType::None:
    case RegisterType::COM:
    case RegisterType::REG_SR:
      return RegisterType::REG_SR;
    default:
      return std::nullopt;
  }
}

ColumnRule columnRule(Extension extension, RegisterType present) {
  switch (extension) {
    case Extension::None:
    case Extension::PIN:
    case Extension::COM:
      return {SlotLogic, RegisterType::COM};
    case Extension::D:
    case Extension::Q:
    case Extension::FB:
    case Extension::REG:
      return {SlotLogic, dataType(present)};
    case Extension::T:
      return {SlotLogic, RegisterType::REG_T};
    case Extension::L:
      return {SlotLogic, RegisterType::REG_L};
    case Extension::X1:
      return {SlotXorLeft, present};
    case Extension::X2:
      return {SlotXorRight, present};
    case Extension::C:
    case Extension::CP:
      return {SlotClock, present};
    case Extension::LE:
    case Extension::LH:
      return {SlotClock, RegisterType::REG_L};
    case Extension::CE:
      return {SlotClockEnable, present};
    case Extension::RE:
    case Extension::AR:
    case Extension::SR:
    case Extension::ASYNC:
    case Extension::SYNC:
    case Extension::CLR:
    case Extension::ACLR:
      return {SlotReset, initializedType(present)};
    case Extension::PR:
    case Extension::AP:
    case Extension::SP:
    case Extension::SET:
    case Extension::ASET:
      return {SlotSet, initializedType(present)};
    case Extension::R:
      return {SlotReset, setResetType(present)};
    case Extension::S:
      return {SlotSet, setResetType(present)};
    case Extension::OE:
      return {SlotOutputEnable, present};
    case Extension::J:
    case Extension::K:
      return {std::nullopt, RegisterType::REG_JK};
    default:
      return {std::nullopt, present};
  }
}

}  // namespace

Signal::Signal(TermTable& terms, const PlaName& declaration, bool node)
    : name(declaration.base),
      pinNumber(declaration.pin),
      isNode(node),
      registerType(declaration.registerType),
      polarity(declaration.polarity),
      terms_(&terms) {}

Equation& Signal::makeEquation(Slot index) {
  slots_[index] = std::make_unique<Equation>(*terms_, this, name);
  return *slots_[index];
}

Status Signal::addEquation(const PlaFile& file, int column, const PlaName& columnName,
                           ColumnSets sets) {
  const ColumnRule rule = columnRule(columnName.extension, registerType);
  if (!rule.registerType) {
    logMessage(toErrorAndLog, "<ERROR> %s: %s has assigned multiple register types\n", toolTag,
               name.c_str());
    return Status::Failed;
  }
  registerType = *rule.registerType;
  const char* extension = extensionText(columnName.extension).data();
  if (!rule.slot) {
    logMessage(toErrorAndLog, "<ERROR> %s: %s%s is not supported\n", toolTag, name.c_str(),
               extension);
    return Status::Fatal;
  }
  Slot target = *rule.slot;
  if (columnName.xorHalf == XorHalf::Left) target = SlotXorLeft;
  if (columnName.xorHalf == XorHalf::Right) target = SlotXorRight;
  if (slot(target) != nullptr) {
    logMessage(toErrorAndLog, "<ERROR> %s: %s%s conflict with an equation previously defined\n",
               toolTag, name.c_str(), extension);
    return Status::Fatal;
  }
  return makeEquation(target).readColumn(file, column, std::move(sets));
}

void Signal::collectColumns(ColumnSet& target, bool logicOnly) {
  if (hasXorPair()) {
    slot(SlotXorLeft)->markUsedColumns(target);
    slot(SlotXorRight)->markUsedColumns(target);
  } else if (slot(SlotLogic) != nullptr) {
    slot(SlotLogic)->markUsedColumns(target);
  }
  if (logicOnly) return;
  for (const Slot index : controlSlots) {
    if (slot(index) != nullptr) slot(index)->markUsedColumns(target);
  }
}

bool Signal::hasNoLogic() const {
  return std::none_of(allSlots.begin(), allSlots.end(), [this](Slot index) {
    return slotHasLogic(index) &&
           !(index == SlotOutputEnable && slot(index)->isConstant(Constant::Zero));
  });
}

Status Signal::checkLogic() {
  if (slot(SlotLogic) != nullptr || slot(SlotXorLeft) != nullptr) return Status::Ok;
  if (slot(SlotOutputEnable) != nullptr && slot(SlotOutputEnable)->isConstant(Constant::Zero)) {
    deleteSlot(SlotOutputEnable);
  }
  if (slot(SlotClock) == nullptr && slot(SlotOutputEnable) == nullptr) return Status::Ok;
  logMessage(toErrorAndLog, "<ERROR> %s: %s is missing logic function\n", toolTag, name.c_str());
  return Status::Fatal;
}

int Signal::logicTermCount() const {
  const Equation* logic = slot(SlotLogic);
  if (logic == nullptr) return 0;
  return logic->onSet().empty() && !hasXorPair() ? logic->offCount() : logic->onCount();
}

void Signal::followDeletion(const std::vector<Term>& renumbered, std::span<const int> newColumn) {
  for (const auto& equation : slots_) {
    if (equation) equation->renumber(renumbered);
  }
  std::size_t kept = 0;
  for (const std::size_t column : columns) {
    if (newColumn[column] >= 0) columns[kept++] = static_cast<std::size_t>(newColumn[column]);
  }
  columns.resize(kept);
  for (int* column : {&pinColumn, &feedbackColumn}) {
    if (*column >= 0) *column = newColumn[static_cast<std::size_t>(*column)];
  }
}

}  // namespace ostrel
