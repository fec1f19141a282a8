#include "intel/outline/OutlineOrders.h"

#include <algorithm>
#include <numeric>

#include "base/CodePage1252.h"
#include "base/NameSet.h"
#include "intel/outline/AlphabeticalOrder.h"

namespace quill {
namespace {

/// Numbers texts: those that are equal but for case have the same number. Large scripts say the same over
/// and over; only what differs is sorted.
class TextNumbers {
 public:
  uint32_t NumberOf(std::string_view text) {
    m_lower.clear();
    for (const char c : text) m_lower.push_back(cp1252::ToLower(c));
    if ((m_entries.size() + 1) * 2 > m_slots.size()) Grow();
    const uint64_t hash = NameSet::Hash(m_lower);
    const size_t mask = m_slots.size() - 1;
    size_t i = hash & mask;
    for (; m_slots[i] != 0; i = (i + 1) & mask) {
      const Entry& entry = m_entries[m_slots[i] - 1];
      if (entry.hash == hash && TextOf(entry) == m_lower) return m_slots[i] - 1;
    }
    m_entries.push_back({hash, m_text.size(), m_lower.size()});
    m_text += m_lower;
    m_slots[i] = static_cast<uint32_t>(m_entries.size());
    return m_slots[i] - 1;
  }
  /// By number, in lower case; valid until the next one is asked for.
  std::vector<std::string_view> Texts() const {
    std::vector<std::string_view> texts;
    texts.reserve(m_entries.size());
    for (const Entry& entry : m_entries) texts.push_back(TextOf(entry));
    return texts;
  }

 private:
  struct Entry {
    uint64_t hash;
    size_t start;
    size_t length;
  };
  std::string_view TextOf(const Entry& entry) const {
    return std::string_view(m_text).substr(entry.start, entry.length);
  }
  void Grow() {
    m_slots.assign(std::max<size_t>(m_slots.size() * 2, 64), 0);
    const size_t mask = m_slots.size() - 1;
    for (size_t number = 0; number < m_entries.size(); ++number) {
      size_t i = m_entries[number].hash & mask;
      while (m_slots[i] != 0) i = (i + 1) & mask;
      m_slots[i] = static_cast<uint32_t>(number + 1);
    }
  }

  std::string m_lower;
  std::string m_text;
  std::vector<Entry> m_entries;
  std::vector<uint32_t> m_slots;
};

/// The positions of the numbers, sorted by the rank that each number has; equal ones stay in their order.
std::vector<uint32_t> SortedBy(const std::vector<uint32_t>& numbers, const std::vector<uint32_t>& rank) {
  std::vector<uint32_t> starts(rank.size() + 1, 0);
  for (const uint32_t number : numbers) ++starts[rank[number] + 1];
  std::partial_sum(starts.begin(), starts.end(), starts.begin());
  std::vector<uint32_t> sorted(numbers.size());
  for (uint32_t i = 0; i < numbers.size(); ++i) sorted[starts[rank[numbers[i]]]++] = i;
  return sorted;
}

std::vector<uint32_t> RanksOf(const std::vector<uint32_t>& order) {
  std::vector<uint32_t> ranks(order.size());
  for (uint32_t rank = 0; rank < order.size(); ++rank) ranks[order[rank]] = rank;
  return ranks;
}

class OrderMaker {
 public:
  OrderMaker(std::shared_ptr<const OutlineParts> parts, const Outline& previous,
             const std::atomic<bool>* stop)
      : m_parts(*parts),
        m_outline(std::move(parts), std::make_shared<const OutlineOrders>()),
        m_was(previous),
        m_stop(stop) {
    CompareParts();
  }

  bool IsSame() const { return !m_anyNew && !m_anyGone; }
  bool IsStopped() const { return m_stop != nullptr && m_stop->load(std::memory_order_relaxed); }

  std::shared_ptr<const OutlineOrders> Make() {
    CollectInOrderOfText();
    SortNew();
    return std::make_shared<const OutlineOrders>(std::move(m_orders));
  }

 private:
  void CompareParts() {
    const auto& was = m_was.Parts().bySlot;
    m_kept.assign(std::max(was.size(), m_parts.bySlot.size()), 0);
    const OutlineParts::Part* last = nullptr;
    bool inOrder = true;
    size_t kept = 0;
    for (const uint32_t slot : m_parts.sequence) {
      const OutlineParts::Part& part = m_parts.bySlot[slot];
      if (slot >= was.size() || was[slot].group != part.group || was[slot].file != part.file) continue;
      inOrder = inOrder && (last == nullptr || last->rank < was[slot].rank);
      last = &was[slot];
      m_kept[slot] = 1;
      ++kept;
    }
    // Equal texts would stand in the order that they had; and few among many are sorted with these.
    if (!inOrder || kept < m_parts.sequence.size() / 8) {
      kept = 0;
      std::fill(m_kept.begin(), m_kept.end(), uint8_t{0});
    }
    m_anyNew = kept < m_parts.sequence.size();
    m_anyGone = kept < m_was.Parts().sequence.size();
  }

  void CollectInOrderOfText() {
    NameSet names;
    for (const uint32_t slot : m_parts.sequence) {
      if (IsStopped()) return;
      const OutlineParts::Part& part = m_parts.bySlot[slot];
      const OutlineGroup& group = *part.group;
      for (size_t i = 0; i < group.items.size(); ++i) {
        const OutlineRef ref = Outline::RefOf(slot, i);
        if (m_kept[slot] == 0) m_new.push_back(ref);
        if (m_outline.RootOf(ref) == OutlineRoot::kPaths) m_orders.paths.push_back(ref);
      }
      for (const uint16_t i : group.names) {
        const OutlineRef ref = Outline::RefOf(slot, i);
        if (names.Insert(m_outline.BareNameOf(ref))) m_orders.elements.push_back(ref);
      }
      if (part.file != 0) continue;
      for (size_t i = 0; i < group.namedFiles.size(); ++i) {
        m_orders.namedFiles.push_back(Outline::RefOf(slot, i));
      }
      for (size_t i = 0; i < group.includes.size(); ++i) {
        m_orders.includes.push_back(Outline::RefOf(slot, i));
      }
    }
  }

  void SortNew() {
    TextNumbers texts;
    std::vector<uint32_t> numbers;
    numbers.reserve(m_new.size());
    for (const OutlineRef ref : m_new) numbers.push_back(texts.NumberOf(m_outline.TextOf(ref)));
    if (IsStopped()) return;

    const std::vector<std::string_view> all = texts.Texts();
    const std::vector<uint32_t> order = AlphabeticalOrder(all);
    std::array<std::vector<OutlineRef>, kOutlineRootCount> roots;
    for (const uint32_t i : SortedBy(numbers, RanksOf(order))) {
      roots[static_cast<size_t>(m_outline.RootOf(m_new[i]))].push_back(m_new[i]);
    }
    for (size_t root = 0; root < kOutlineRootCount && !IsStopped(); ++root) {
      m_orders.roots[root] = Merged(m_was.Orders().roots[root], roots[root],
                                    [this](OutlineRef a, OutlineRef b) { return CompareTexts(a, b) < 0; });
      std::vector<OutlineRef>().swap(roots[root]);
    }
    if (IsStopped()) return;

    // Sorted by their texts, and those by their words: of equal words the texts stay sorted.
    std::vector<std::string_view> words;
    words.reserve(order.size());
    for (const uint32_t number : order) words.push_back(DefinedWord(all[number]));
    std::vector<uint32_t> byWord;
    byWord.reserve(order.size());
    for (const uint32_t place : AlphabeticalOrder(words)) byWord.push_back(order[place]);
    std::vector<OutlineRef> defining;
    for (const uint32_t i : SortedBy(numbers, RanksOf(byWord))) {
      const OutlineRef ref = m_new[i];
      if (m_outline.RootOf(ref) != OutlineRoot::kPaths && !m_outline.WordOf(ref).empty()) {
        defining.push_back(ref);
      }
    }
    m_orders.words = Merged(m_was.Orders().words, defining, [this](OutlineRef a, OutlineRef b) {
      const int compared = CompareNoCase(m_outline.WordOf(a), m_outline.WordOf(b));
      return compared != 0 ? compared < 0 : CompareTexts(a, b) < 0;
    });
  }

  /// Never equal: what stands first in the text is less.
  int CompareTexts(OutlineRef a, OutlineRef b) const {
    const int compared = CompareNoCase(m_outline.TextOf(a), m_outline.TextOf(b));
    if (compared != 0) return compared;
    return m_outline.IsBefore(a, b) ? -1 : 1;
  }

  /// What is kept of an order, and what is new, sorted likewise.
  template <typename Less>
  std::vector<OutlineRef> Merged(const std::vector<OutlineRef>& was, const std::vector<OutlineRef>& added,
                                 const Less& isLess) const {
    std::vector<OutlineRef> merged;
    merged.reserve(was.size() + added.size());
    std::copy_if(was.begin(), was.end(), std::back_inserter(merged),
                 [this](OutlineRef ref) { return m_kept[Outline::SlotOf(ref)] != 0; });
    if (merged.empty()) return added;
    // From the end on, so that nothing needs room twice: large scripts have a million definitions.
    auto end = static_cast<ptrdiff_t>(merged.size());
    merged.resize(merged.size() + added.size());
    auto to = static_cast<ptrdiff_t>(merged.size());
    const auto begin = merged.begin();
    for (auto ref = added.rbegin(); ref != added.rend(); ++ref) {
      // Mostly one of the two is by far the longer one: the place is near to the end, or the others are few.
      ptrdiff_t low = end;
      ptrdiff_t high = end;
      for (ptrdiff_t step = 1; low > 0 && !isLess(begin[low - 1], *ref); step *= 2) {
        high = low - 1;
        low = std::max<ptrdiff_t>(low - step, 0);
      }
      const ptrdiff_t place = std::lower_bound(begin + low, begin + high, *ref, isLess) - begin;
      std::move_backward(begin + place, begin + end, begin + to);
      to -= end - place + 1;
      merged[static_cast<size_t>(to)] = *ref;
      end = place;
    }
    return merged;
  }

  const OutlineParts& m_parts;
  Outline m_outline;  ///< of the parts, still without orders
  const Outline& m_was;
  const std::atomic<bool>* m_stop;
  std::vector<uint8_t> m_kept;  ///< by slot: its group is the one that it was
  bool m_anyNew = false;
  bool m_anyGone = false;
  std::vector<OutlineRef> m_new;  ///< of groups that are not kept, in the order of the text
  OutlineOrders m_orders;
};

}  // namespace

Outline MakeOutline(OutlineParts parts, const Outline& previous, const std::atomic<bool>* stop) {
  const auto shared = std::make_shared<const OutlineParts>(std::move(parts));
  OrderMaker maker(shared, previous, stop);
  if (maker.IsSame()) return {shared, previous.SharedOrders()};
  auto orders = maker.Make();
  return maker.IsStopped() ? Outline() : Outline(shared, std::move(orders));
}

}  // namespace quill
