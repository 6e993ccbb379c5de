#pragma once

#include <string>
#include <vector>

#include "tqplatform/desktop/EditText.h"
#include "tqplatform/desktop/Window.h"

namespace tqplatform {

/// A field with a list of choices: the window class "COMBOBOX". The parent is told what the user
/// does; messages that a program sends change the control without a word. Typing takes the
/// selection of an item away, since the field may hold another text then.
class ComboBox final : public Window {
  public:
    explicit ComboBox(WindowDescription const &description) : Window(description) {}

    LRESULT receive(unsigned int message, WPARAM first, LPARAM second) override;
    std::string_view text() const override { return field_.text(); }

    /// Sets the field, unless it is one that only shows the selected item.
    void setText(std::string_view text) override;

    EditText const &field() const { return field_; }
    std::vector<std::string> const &items() const { return items_; }
    int selected() const { return selected_; }
    bool isOpen() const { return isOpen_; }

    /// Whether the user may type any text; whether the list is always in sight.
    bool hasEdit() const { return kind() != CBS_DROPDOWNLIST; }
    bool isSimple() const { return kind() == CBS_SIMPLE; }

  private:
    unsigned int kind() const { return style() & CBS_DROPDOWNLIST; }
    LRESULT receiveForList(unsigned int message, WPARAM first, LPARAM second);
    LRESULT receiveForField(unsigned int message, WPARAM first, LPARAM second);

    bool isItem(std::intptr_t index) const;
    std::string const &item(std::intptr_t index) const;
    int select(std::intptr_t index);
    int insert(std::intptr_t index, std::string text);
    int remove(std::intptr_t index);
    int find(std::intptr_t behind, LPARAM text, bool whole) const;
    std::intptr_t sortedPlace(std::string_view text) const;

    void type(char c);
    void press(unsigned int key);
    void moveSelection(unsigned int key);
    void choose(int index);
    void tell(EditText::Effect effect);
    void open();
    void remember();
    void close(unsigned int how);

    std::vector<std::string> items_;
    EditText field_;
    int selected_ = CB_ERR;
    int selectedBefore_ = CB_ERR;  ///< when the list was opened, or at the last key that typed
    std::string textBefore_;       ///< of the field then, if no item was selected
    bool isOpen_ = false;
};

}  // namespace tqplatform
