#pragma once
#include <QObject>
#include <cstdint>
#include <vector>

class QAbstractScrollArea;

namespace quill {

/// Whose turn it is when a view gets a key, a mouse button or the wheel, in this order; the text comes last.
enum class InputTurn : uint8_t {
  kList,      ///< an open list of names
  kTip,       ///< a tip beside the caret or the mouse
  kTemplate,  ///< the stops of a template, and its name
  kMarks,     ///< marks of a search, which Escape takes away
  kLink,      ///< a name that is clicked to go where it is defined
};

/// Somebody who sees a view's input before the text does.
class InputTaker {
 public:
  virtual ~InputTaker() = default;
  /// A key press, key release, shortcut override, mouse press, mouse release, turn of the wheel, or the wish
  /// for a tip when the mouse rests. True takes the event: nobody after this one sees it, nor does the text.
  virtual bool TakeInput(QEvent& event) = 0;
};

/// The input of one view: offers it to everybody in the order of their turns. The first that takes it wins.
class InputChain : public QObject {
 public:
  /// Belongs to the view.
  explicit InputChain(QAbstractScrollArea& view);

  /// A taker has one place in the chain; takers of one turn come in the order in which they were added.
  void Add(InputTurn turn, InputTaker& taker);
  void Remove(InputTaker& taker);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Place {
    InputTurn turn;
    InputTaker* taker;
  };
  bool Has(const InputTaker* taker) const;

  std::vector<Place> m_places;  ///< in order
};

}  // namespace quill
