#include "tessaluna/platform/layout/Objectives.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tessaluna::platform {

namespace {

// Costs at the last priority go up to the count of constraints.
constexpr double costEpsilon(double priority) { return priority == Objectives::tiePriority ? 1e-5 : 1e-8; }

}  // namespace

double Objectives::Sum::costOf(int symbol) const {
  const auto index = static_cast<std::size_t>(symbol);
  return index < places_.size() && places_[index] >= 0 ? cells_[places_[index]].coefficient : 0;
}

void Objectives::Sum::add(int symbol, double cost) {
  const auto index = static_cast<std::size_t>(symbol);
  if (places_.size() <= index) places_.resize(index + 1, -1);
  if (places_[index] < 0) {
    places_[index] = static_cast<int>(cells_.size());
    cells_.push_back({symbol, 0});
  }
  double& sum = cells_[places_[index]].coefficient;
  sum += cost;
  if (std::abs(sum) <= Tableau::coefficientEpsilon) remove(symbol);
}

void Objectives::Sum::remove(int symbol) {
  const auto index = static_cast<std::size_t>(symbol);
  if (index >= places_.size() || places_[index] < 0) return;
  const Tableau::Cell last = cells_.back();
  cells_[places_[index]] = last;
  places_[last.symbol] = places_[index];
  places_[index] = -1;
  cells_.pop_back();
}

void Objectives::add(double priority, int symbol, double cost) {
  sums_[priority].add(symbol, cost);
  note(symbol);
}

void Objectives::replace(int symbol, const Tableau::Row& row) {
  for (auto& [priority, sum] : sums_) {
    const double cost = sum.costOf(symbol);
    if (cost == 0) continue;
    sum.remove(symbol);
    for (const Tableau::Cell& cell : row.cells) {
      sum.add(cell.symbol, cost * cell.coefficient);
      note(cell.symbol);
    }
  }
}

void Objectives::remove(int symbol) {
  for (auto& [priority, sum] : sums_) sum.remove(symbol);
  std::erase_if(sums_, [](const auto& one) { return one.second.isEmpty(); });
}

void Objectives::clear() { *this = {}; }

void Objectives::note(int symbol) {
  if (isChanged_.size() <= static_cast<std::size_t>(symbol)) isChanged_.resize(static_cast<std::size_t>(symbol) + 1);
  if (isChanged_[symbol]) return;
  isChanged_[symbol] = true;
  changed_.push(symbol);
}

bool Objectives::isImproving(int symbol) const {
  for (const auto& [priority, sum] : sums_)
    if (const double cost = sum.costOf(symbol); std::abs(cost) > costEpsilon(priority)) return cost < 0;
  return false;
}

void Objectives::keepCheapest(std::vector<Tableau::Cell>& candidates) const {
  std::vector<double> ratios(candidates.size());
  for (const auto& [priority, sum] : sums_) {
    if (candidates.size() <= 1) return;
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < candidates.size(); ++i) {
      ratios[i] = sum.costOf(candidates[i].symbol) / std::abs(candidates[i].coefficient);
      least = std::min(least, ratios[i]);
    }
    std::size_t kept = 0;
    for (std::size_t i = 0; i < candidates.size(); ++i)
      if (ratios[i] <= least + costEpsilon(priority)) candidates[kept++] = candidates[i];
    candidates.resize(kept);
  }
}

}  // namespace tessaluna::platform
