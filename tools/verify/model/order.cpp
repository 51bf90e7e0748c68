// A depth-first walk with a stack of its own. A loop shows as an edge to a Signal that is still on
// the stack. If that Signal may be cut, the walk goes on, since whoever reads it takes its free
// value; if another one on the loop is cut, those in front of it were visited in the wrong order
// and the walk starts again.
//
// Cost: linear in the edges for each start; after a number of starts every Signal that may be cut
// is, which leaves no loop to find.

#include "verify/model/order.h"

namespace ostrel::verify {

namespace {

constexpr int maxStarts = 64;

enum class Mark : unsigned char { New, OnStack, Done };

struct Step {
  std::size_t signal;
  std::size_t next;  // the edge to take next
};

class Walk {
 public:
  Walk(const Dependencies& graph, Order& order)
      : graph_(graph), order_(order), marks_(graph.reads.size(), Mark::New) {}

  // False if the walk must start again with the new cuts.
  bool run() {
    order_.signals.clear();
    for (std::size_t s = 0; s < marks_.size(); ++s) {
      if (isVisited(s) && marks_[s] == Mark::New && !visit(s)) return false;
    }
    return true;
  }

 private:
  bool isVisited(std::size_t s) const { return graph_.replaced[s] && !order_.cut[s]; }

  void push(std::size_t s) {
    marks_[s] = Mark::OnStack;
    stack_.push_back({s, 0});
  }

  bool visit(std::size_t root) {
    push(root);
    while (!stack_.empty()) {
      Step& step = stack_.back();
      const std::vector<std::size_t>& reads = graph_.reads[step.signal];
      if (step.next == reads.size()) {
        finish();
        continue;
      }
      const std::size_t target = reads[step.next++];
      if (!isVisited(target)) continue;
      if (marks_[target] == Mark::New)
        push(target);
      else if (marks_[target] == Mark::OnStack && !cutLoop(target))
        return false;
    }
    return true;
  }

  void finish() {
    const std::size_t s = stack_.back().signal;
    stack_.pop_back();
    marks_[s] = Mark::Done;
    if (!order_.cut[s]) order_.signals.push_back(s);
  }

  // True if the walk can go on.
  bool cutLoop(std::size_t target) {
    std::size_t i = stack_.size() - 1;
    while (stack_[i].signal != target) --i;
    for (std::size_t k = i; k < stack_.size(); ++k) {
      const std::size_t s = stack_[k].signal;
      if (!graph_.canCut[s]) continue;
      order_.cut[s] = true;
      return k == i;
    }
    order_.cycle = target;
    order_.cut[target] = true;
    return true;
  }

  const Dependencies& graph_;
  Order& order_;
  std::vector<Mark> marks_;
  std::vector<Step> stack_;
};

}  // namespace

Order orderOf(const Dependencies& graph, std::vector<bool> cut) {
  Order order;
  order.cut = std::move(cut);
  for (int start = 0;; ++start) {
    Walk walk(graph, order);
    if (walk.run()) return order;
    if (start < maxStarts) continue;
    for (std::size_t s = 0; s < order.cut.size(); ++s) {
      if (graph.canCut[s] && graph.replaced[s]) order.cut[s] = true;
    }
  }
}

}  // namespace ostrel::verify
