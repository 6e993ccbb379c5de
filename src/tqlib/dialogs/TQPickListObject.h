#pragma once

#include "tqlib/foundation/Export.h"
#include "tqlib/foundation/TQString.h"

/// What can stand in a TQPickList. An application derives its own elements from it and fills
/// `text`.
class TQLIB_API TQPickListObject {
  public:
    TQPickListObject() = default;
    TQPickListObject(TQPickListObject const &) = default;
    TQPickListObject &operator=(TQPickListObject const &) = default;
    ~TQPickListObject() = default;  // elements aren't deleted by this class

    /// Called each time the object is given to a list, before the list looks whether it has it.
    virtual void prepare() = 0;

  protected:
    friend class TQPickList;

    TQString text;  ///< what the list shows of the object
};
