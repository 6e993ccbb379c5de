#pragma once

class CWnd;

/// The limits of a number and the window for messages about it. A value equal to a limit is within
/// it. The window, null for none, isn't owned.
template <class Value>
class CCheckBereich {
  public:
    CCheckBereich(Value lowest, Value highest, Value usualLowest, Value usualHighest,
                  CWnd *window = nullptr)
        : hardMin(lowest),
          hardMax(highest),
          softMin(usualLowest),
          softMax(usualHighest),
          messageWindow(window) {}

    Value hardMin;  ///< below this the value is an error
    Value hardMax;  ///< above this, too
    Value softMin;  ///< below this the value is unusual
    Value softMax;  ///< above this, too
    CWnd *messageWindow;
};
