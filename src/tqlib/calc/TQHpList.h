#pragma once

#include <cstdint>
#include <utility>

#include "tqlib/foundation/Export.h"
#include "tqlib/foundation/TQException.h"
#include "tqplatform/framework/CObject.h"

/// A doubly linked list with a cursor, on which the calculator's variables and commands stand and
/// from which TQPickList is made. Each node holds a copy of an element. The cursor is null only
/// while the list is empty.
template <typename Element>
class TQLIB_API TQHpList : public CObject {
  public:
    /// An empty list.
    TQHpList() = default;

    /// Frees all nodes, from the first to the last.
    ~TQHpList() override { empty(); }

    /// Puts a copy of `element` behind the cursor, or into the empty list, and moves the cursor to
    /// it.
    void add(Element const &element) {
        Node *const next = current_ == nullptr ? nullptr : current_->next;
        Node *const node = new Node{element, current_, next};
        (current_ == nullptr ? head_ : current_->next) = node;
        (next == nullptr ? tail_ : next->prev) = node;
        current_ = node;
        if (count_++ != 0) ++position_;
        ++changes_;
    }

    /// The same in front of the cursor.
    void addInFront(Element const &element) {
        Node *const prev = current_ == nullptr ? nullptr : current_->prev;
        Node *const node = new Node{element, prev, current_};
        (current_ == nullptr ? tail_ : current_->prev) = node;
        (prev == nullptr ? head_ : prev->next) = node;
        current_ = node;
        ++count_;
        ++changes_;
    }

    /// Removes the cursor's node and gives its element. The cursor moves to the following node, or
    /// to the preceding one if there is none. Throws TQException::EMPTY_LIST on an empty list.
    Element remove() {
        Node *const node = current_;
        if (node == nullptr) throw TQException::EMPTY_LIST();
        (node->prev == nullptr ? head_ : node->prev->next) = node->next;
        (node->next == nullptr ? tail_ : node->next->prev) = node->prev;
        current_ = node->next;
        if (current_ == nullptr) {
            current_ = node->prev;
            if (position_ > 0) --position_;
        }
        --count_;
        ++changes_;
        Element element = std::move(node->value);
        delete node;
        return element;
    }

    /// Move the cursor to the first or last node.
    void toFirst() {
        current_ = head_;
        position_ = 0;
    }
    void toLast() {
        current_ = tail_;
        position_ = count_ == 0 ? 0 : count_ - 1;
    }

    /// Removes all nodes.
    void empty() {
        while (head_ != nullptr)
            delete std::exchange(head_, head_->next);
        head_ = tail_ = current_ = nullptr;
        count_ = position_ = 0;
        ++changes_;
        isHandedOut_ = false;
    }

    /// The number of elements, and the index of the cursor; 0 on an empty list.
    int count() const { return count_; }
    int position() const { return position_; }

    /// The cursor's element; throws TQException::EMPTY_LIST on an empty list.
    Element &current() const {
        if (current_ == nullptr) throw TQException::EMPTY_LIST();
        return *handOut(current_);
    }

    /// The cursor's element, or null on an empty list.
    Element *cursor() const { return current_ == nullptr ? nullptr : handOut(current_); }

    /// The first element from the start that `fits`, or null. The cursor stays.
    template <typename Predicate>
    Element *find(Predicate fits) const {
        for (Node *node = head_; node != nullptr; node = node->next)
            if (fits(std::as_const(node->value))) return handOut(node);
        return nullptr;
    }

    /// Moves the cursor to the first element from the start that `fits`. False, with the cursor
    /// where it was, if there is none.
    template <typename Predicate>
    bool toFirstThat(Predicate fits) {
        int index = 0;
        for (Node *node = head_; node != nullptr; node = node->next, ++index) {
            if (!fits(std::as_const(node->value))) continue;
            current_ = node;
            position_ = index;
            return true;
        }
        return false;
    }

  protected:
    /// How often elements were added or removed.
    std::uint64_t changes() const { return changes_; }

    /// Whether an element was handed out: who has it may make it another one without a word.
    bool isHandedOut() const { return isHandedOut_; }

  private:
    struct Node {
        Element value;
        Node *prev;
        Node *next;
    };

    Element *handOut(Node *node) const {
        isHandedOut_ = true;
        return &node->value;
    }

    Node *head_ = nullptr;
    Node *tail_ = nullptr;
    Node *current_ = nullptr;  ///< the cursor
    int count_ = 0;
    int position_ = 0;  ///< index of the cursor
    std::uint64_t changes_ = 0;
    mutable bool isHandedOut_ = false;
};
