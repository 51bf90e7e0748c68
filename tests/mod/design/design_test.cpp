// The model: names, columns and terms in step.
#include "design/design.h"

#include <gtest/gtest.h>

#include "support/built_design.h"

namespace ostrel {
namespace {

TEST(Design, NamesNodesAsShortAsTheyFit) {
  Built built("#$ PINS 3 A abc_0 " + std::string(40, 'n') + "\n.i 1\n.o 2\n.ilb A\n.ob abc_0 " +
              std::string(40, 'n') + "\n1 11\n");
  const std::vector<Term> term = {built.design.terms().term(Cube("1"))};
  EXPECT_EQ(built.design.createNodeFrom(term, "ABC").name, "ABC_1");
  EXPECT_EQ(built.design.createNodeFrom(term, std::string(40, 'n')).name,
            std::string(31, 'n') + "_0");
  std::string last;
  for (int i = 1; i <= 1000; ++i) {
    last = built.design.createNodeFrom(term, std::string(40, 'n')).name;
  }
  EXPECT_EQ(last, std::string(30, 'n') + "_1000");
}

TEST(Design, CountsReadersAndShrinksItsColumns) {
  Built built(
      "#$ PINS 3 A B Y\n#$ NODES 2 dead n\n.i 5\n.o 3\n.ilb A dead B n n.FB\n.ob dead Y n\n.p 3\n"
      "1---- 110\n1-1-- 001\n---11 010\n");
  const Readers readers = countReaders(built.design);
  EXPECT_EQ(fanoutOf(built.signal("A"), readers), 3);
  EXPECT_EQ(fanoutOf(built.signal("n"), readers), 2);  // one reader, two columns
  EXPECT_EQ(fanoutOf(built.signal("dead"), readers), 0);
  removeDeadNodes(built.design, readers);
  EXPECT_EQ(built.design.find("dead"), nullptr);
  EXPECT_EQ(built.terms("Y", SlotLogic), Terms({"1---", "--11"}));
  EXPECT_EQ(built.signal("B").pinColumn, 1);
  EXPECT_EQ(built.signal("n").feedbackColumn, 3);
  EXPECT_EQ(built.signal("n").pinColumn, 2);
}

TEST(TermTable, GivesEqualTermsEqualHandles) {
  TermTable terms(70);
  const Term far = terms.term(Cube(std::string(69, '-') + "1"));
  const Term near = terms.term(Cube("1" + std::string(69, '-')));
  const Term both = terms.term(Cube("1" + std::string(68, '-') + "1"));
  terms.appendColumns(100);
  EXPECT_EQ(terms.term(Cube("1" + std::string(169, '-'))), near);
  ColumnSet gone;
  gone.insert(69);
  const std::vector<Term> renumbered = terms.deleteColumns(gone);
  EXPECT_EQ(renumbered[near.index], renumbered[both.index]);
  EXPECT_EQ(terms.cube(renumbered[far.index]).literalCount(), 0U);
  EXPECT_EQ(terms.width(), 169U);
  terms.invertColumns([] {
    ColumnSet first;
    first.insert(0);
    return first;
  }());
  EXPECT_EQ(terms.term(Cube("0")), renumbered[near.index]);
}

}  // namespace
}  // namespace ostrel
