#include "text/ui/InputChain.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QPointer>
#include <algorithm>

namespace quill {

InputChain::InputChain(QAbstractScrollArea& view) : QObject(&view) {
  view.installEventFilter(this);
  view.viewport()->installEventFilter(this);
}

void InputChain::Add(InputTurn turn, InputTaker& taker) {
  Remove(taker);
  const auto behind =
      std::upper_bound(m_places.begin(), m_places.end(), turn,
                       [](InputTurn wanted, const Place& place) { return wanted < place.turn; });
  m_places.insert(behind, {turn, &taker});
}

void InputChain::Remove(InputTaker& taker) {
  std::erase_if(m_places, [&taker](const Place& place) { return place.taker == &taker; });
}

bool InputChain::Has(const InputTaker* taker) const {
  return std::any_of(m_places.begin(), m_places.end(),
                     [taker](const Place& place) { return place.taker == taker; });
}

bool InputChain::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::Wheel:
    case QEvent::ToolTip:
      break;
    default:
      return false;
  }
  // Whoever has its turn may send others away, or close the view.
  const QPointer<InputChain> alive(this);
  const std::vector<Place> places = m_places;
  for (const Place& place : places) {
    if (!Has(place.taker)) continue;
    if (place.taker->TakeInput(*event)) return true;
    if (alive == nullptr) return true;
  }
  return false;
}

}  // namespace quill
