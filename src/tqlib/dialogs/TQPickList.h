#pragma once

// Turns objects of an application into a list of choices.
//
//     struct Channel : TQPickListObject {
//         explicit Channel(char const *name) { text = name; }
//         void prepare() override {}
//     };
//     Channel first("pressure"), second("wind");
//     TQPickList list;
//     list.append(&first);
//     list.append(&second);
//     char **const choices = list.makePickList();     // "pressure", "wind", null

#include <cstdint>
#include <unordered_set>
#include <vector>

#include "tqlib/calc/TQHpList.h"
#include "tqlib/dialogs/TQPickListObject.h"
#include "tqlib/foundation/Export.h"

/// A list of objects, each of which it has once. The objects stay the caller's and outlive each
/// makePickList(). The list only grows; its cursor stands on the object that was added last, or on
/// the last one after makePickList().
class TQLIB_API TQPickList : public TQHpList<TQPickListObject *> {
  public:
    TQPickList();
    ~TQPickList() override;

    /// Add an object in front of the cursor or behind it, and move the cursor to it. The result is
    /// 1, or 0 with the list as it was if it has this object already, or for null. The object is
    /// prepared in any case.
    int insert(TQPickListObject *object);
    int append(TQPickListObject *object);

    /// Makes the choices anew: copies of the objects' texts in the order of the list, and null.
    /// They belong to the list and last until the next call.
    char **makePickList();

    /// The choices that were made last, or null.
    char **getPickList() { return pickList_.empty() ? nullptr : pickList_.data(); }

  private:
    using Base = TQHpList<TQPickListObject *>;
    using Base::add;
    using Base::addInFront;
    using Base::empty;
    using Base::remove;

    TQLIB_INTERNAL void gather();
    template <typename Add>
    TQLIB_INTERNAL int take(TQPickListObject *object, Add add);

    std::vector<char *> pickList_;                          ///< into texts_, and null
    std::vector<char> texts_;                               ///< each with its NUL
    std::unordered_set<TQPickListObject const *> objects_;  ///< in the list at `gathered_` changes
    std::uint64_t gathered_ = 0;
};
