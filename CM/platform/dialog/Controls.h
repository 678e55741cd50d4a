// Defines the simple controls of a dialog model. The functions under "Events" deliver what the user does.
#pragma once

#include "CM/platform/dialog/CControl.h"

#include <functional>
#include <initializer_list>
#include <vector>

/// Shows a text, its caption.
class CStatic : public CControl {
  public:
    CStatic(CDialog &dialog, CString id, CString text = {}) : CControl(dialog, std::move(id), std::move(text)) {}
    void accept(ControlVisitor &visitor) override { visitor.visit(*this); }

  private:
    [[nodiscard]] bool isField() const override { return false; }
};

/// Shows one of the system's own icons.
class CIcon : public CControl {
  public:
    enum class Kind { none, information, question, warning, error };
    CIcon(CDialog &dialog, CString id) : CControl(dialog, std::move(id), {}) {}
    [[nodiscard]] Kind icon() const { return kind_; }
    void SetIcon(Kind kind) { assign(kind_, kind); }
    void accept(ControlVisitor &visitor) override { visitor.visit(*this); }

  private:
    [[nodiscard]] bool isField() const override { return false; }

    Kind kind_ = Kind::none;
};

class CButton : public CControl {
  public:
    /// `onPressed` may be empty: pressing the button then does nothing.
    CButton(CDialog &dialog, CString id, CString caption, std::function<void()> onPressed)
        : CControl(dialog, std::move(id), std::move(caption)), onPressed_(std::move(onPressed)) {}

    /// Returns whether this is the default button, which the Enter key presses.
    [[nodiscard]] bool isDefault() const { return default_; }
    void setDefault(bool isDefault) { assign(default_, isDefault); }
    /// Returns the name of the image on the button; empty for a button that has only its caption.
    [[nodiscard]] const CString &bitmap() const { return bitmap_; }
    void setBitmap(CString name) { assign(bitmap_, std::move(name)); }

    // Events.
    bool press();

    void accept(ControlVisitor &visitor) override { visitor.visit(*this); }

  private:
    std::function<void()> onPressed_;
    CString bitmap_;
    bool default_ = false;
};

class CCheckBox : public CControl {
  public:
    CCheckBox(CDialog &dialog, CString id, CString caption, std::function<void()> onClicked = {})
        : CControl(dialog, std::move(id), std::move(caption)), onClicked_(std::move(onClicked)) {}

    [[nodiscard]] bool GetCheck() const { return checked_; }
    void SetCheck(bool check) { assign(checked_, check); }

    // Events. No handler is called if the value does not change.
    bool enter(bool check);

    void accept(ControlVisitor &visitor) override { visitor.visit(*this); }

  private:
    std::function<void()> onClicked_;
    bool checked_ = false;
};

/// Offers several options of which one is chosen: radio buttons or a drop-down list.
class CChoice : public CControl {
  public:
    enum class Style { radio, dropDown };
    struct Option {
        CString text;
        bool enabled = true;
    };
    CChoice(CDialog &dialog, CString id, CString caption, Style style, std::function<void()> onSelected = {})
        : CControl(dialog, std::move(id), std::move(caption)), onSelected_(std::move(onSelected)), style_(style) {}

    [[nodiscard]] Style style() const { return style_; }
    [[nodiscard]] const std::vector<Option> &options() const { return options_; }
    void AddString(CString text);
    /// Ignores an index out of range.
    void enableOption(int index, bool enable);
    /// Removes all options, and with them the selection.
    void ResetContent();
    /// Returns the index of the chosen option, or -1.
    [[nodiscard]] int GetCurSel() const { return selected_; }
    /// Chooses an option; an index out of range chooses none.
    void SetCurSel(int index);

    // Events. Refused for an option that doesn't exist or isn't enabled. No handler is called if the choice does
    // not change.
    bool choose(int index);

    void accept(ControlVisitor &visitor) override { visitor.visit(*this); }

  private:
    [[nodiscard]] bool holds(int index) const;

    std::function<void()> onSelected_;
    std::vector<Option> options_;
    int selected_ = -1;
    Style style_;
};

class CComboBox : public CChoice {
  public:
    CComboBox(CDialog &dialog, CString id, CString caption, std::function<void()> onSelected = {})
        : CChoice(dialog, std::move(id), std::move(caption), Style::dropDown, std::move(onSelected)) {}
};

class CRadioGroup : public CChoice {
  public:
    CRadioGroup(CDialog &dialog, CString id, CString caption, std::function<void()> onSelected = {})
        : CChoice(dialog, std::move(id), std::move(caption), Style::radio, std::move(onSelected)) {}
};

class CEdit : public CControl {
  public:
    enum class Lines { one, many };
    CEdit(CDialog &dialog, CString id, CString caption, Lines lines = Lines::one,
          std::function<void()> onChanged = {})
        : CControl(dialog, std::move(id), std::move(caption)), onChanged_(std::move(onChanged)), lines_(lines) {}

    [[nodiscard]] Lines lines() const { return lines_; }
    [[nodiscard]] const CString &text() const { return text_; }
    void SetWindowText(CString text) { assign(text_, std::move(text)); }
    /// Returns whether the box is read-only: the user can select and copy its text, but not change it.
    [[nodiscard]] bool isReadOnly() const { return readOnly_; }
    void SetReadOnly(bool readOnly) { assign(readOnly_, readOnly); }

    // Events. A single-line box takes the text up to its first line end.
    bool enter(const CString &text);

    void accept(ControlVisitor &visitor) override { visitor.visit(*this); }

  private:
    std::function<void()> onChanged_;
    CString text_;
    Lines lines_;
    bool readOnly_ = false;
};
