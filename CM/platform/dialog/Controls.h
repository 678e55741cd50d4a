// The simple controls of a dialog model. What the user does comes in through the functions under "Events".
#pragma once

#include "CM/platform/dialog/CControl.h"

#include <functional>
#include <initializer_list>
#include <vector>

/// A text that is only shown: its caption.
class CStatic : public CControl {
  public:
    CStatic(CDialog &dialog, CString id, CString text = {}) : CControl(dialog, std::move(id), std::move(text)) {}
    void accept(ControlVisitor &visitor) override { visitor.visit(*this); }
};

/// One of the system's own icons.
class CIcon : public CControl {
  public:
    enum class Kind { none, information, question, warning, error };
    CIcon(CDialog &dialog, CString id) : CControl(dialog, std::move(id), {}) {}
    [[nodiscard]] Kind icon() const { return kind_; }
    void SetIcon(Kind kind) { kind_ = kind; }
    void accept(ControlVisitor &visitor) override { visitor.visit(*this); }

  private:
    Kind kind_ = Kind::none;
};

class CButton : public CControl {
  public:
    /// `onPressed` may be empty: pressing then does nothing.
    CButton(CDialog &dialog, CString id, CString caption, std::function<void()> onPressed)
        : CControl(dialog, std::move(id), std::move(caption)), onPressed_(std::move(onPressed)) {}

    /// The default button is the one that the Enter key stands for.
    [[nodiscard]] bool isDefault() const { return default_; }
    void setDefault(bool isDefault) { default_ = isDefault; }
    /// The name of the image on the button, empty for a button with its caption only.
    [[nodiscard]] const CString &bitmap() const { return bitmap_; }
    void setBitmap(CString name) { bitmap_ = std::move(name); }

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
    void SetCheck(bool check) { checked_ = check; }

    // Events. Setting what is set already reaches no handler.
    bool enter(bool check);

    void accept(ControlVisitor &visitor) override { visitor.visit(*this); }

  private:
    std::function<void()> onClicked_;
    bool checked_ = false;
};

/// One of several: radio buttons or a drop-down list.
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
    void AddString(CString text) { options_.push_back({std::move(text), true}); }
    /// An index outside the options is ignored.
    void enableOption(int index, bool enable);
    /// Takes all options off, and the selection with them.
    void ResetContent();
    /// The index of the chosen option, or -1.
    [[nodiscard]] int GetCurSel() const { return selected_; }
    /// An index outside the options chooses none.
    void SetCurSel(int index);

    // Events. An option that isn't there or isn't enabled is refused; choosing the chosen one reaches no handler.
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
    void SetWindowText(CString text) { text_ = std::move(text); }
    /// A read-only box shows a text that can be marked and copied, but takes none.
    [[nodiscard]] bool isReadOnly() const { return readOnly_; }
    void SetReadOnly(bool readOnly) { readOnly_ = readOnly; }

    // Events. A box of one line takes the text up to its first line end.
    bool enter(const CString &text);

    void accept(ControlVisitor &visitor) override { visitor.visit(*this); }

  private:
    std::function<void()> onChanged_;
    CString text_;
    Lines lines_;
    bool readOnly_ = false;
};
