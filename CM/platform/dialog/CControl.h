// Defines CControl, one field of a dialog model. A control is a member of its dialog and registers itself there,
// so drivers show and visit the controls in the order in which the dialog declares them.
#pragma once

#include "CM/platform/CString.h"

#include <cstdint>
#include <type_traits>
#include <utility>

class CDialog;
class CStatic;
class CIcon;
class CButton;
class CCheckBox;
class CChoice;
class CEdit;
class CListCtrl;
class CTreeCtrl;

/// Has one function for each kind of control. A driver needs to know only these kinds.
class ControlVisitor {
  public:
    virtual void visit(CStatic &control) = 0;
    virtual void visit(CIcon &control) = 0;
    virtual void visit(CButton &control) = 0;
    virtual void visit(CCheckBox &control) = 0;
    virtual void visit(CChoice &control) = 0;
    virtual void visit(CEdit &control) = 0;
    virtual void visit(CListCtrl &control) = 0;
    virtual void visit(CTreeCtrl &control) = 0;

  protected:
    ~ControlVisitor() = default;
};

class CControl {
  public:
    CControl(const CControl &) = delete;
    CControl &operator=(const CControl &) = delete;
    virtual ~CControl();

    /// Returns the name by which scripts and drivers address the control: unique in its dialog, never shown.
    /// Buttons that answer a question are called "ok", "cancel", "yes", "no", "yesToAll", "noToAll" in every
    /// dialog.
    [[nodiscard]] const CString &id() const { return id_; }

    /// Returns the text next to the control or on it.
    [[nodiscard]] const CString &caption() const { return caption_; }
    void setCaption(CString caption) { assign(caption_, std::move(caption)); }
    /// Returns the longer explanation; empty if there is none.
    [[nodiscard]] const CString &toolTip() const { return toolTip_; }
    void setToolTip(CString text) { assign(toolTip_, std::move(text)); }

    [[nodiscard]] bool isEnabled() const { return enabled_; }
    void EnableWindow(bool enable) { assign(enabled_, enable); }
    [[nodiscard]] bool isVisible() const { return visible_; }
    void ShowWindow(bool show) { assign(visible_, show); }
    /// Gives this control the keyboard focus.
    void SetFocus();
    [[nodiscard]] bool hasFocus() const;

    /// Returns the number of changes to what the control shows, including its rows and items.
    [[nodiscard]] std::uint64_t revision() const { return revision_; }

    /// Returns whether the user can operate the control: it is visible, enabled, and not just for display.
    [[nodiscard]] bool isUsable() const { return isField() && enabled_ && visible_; }
    /// Returns whether user events reach the control: it is usable and its dialog is open. Otherwise the event
    /// functions of the controls return false and do nothing. The setters always work and call no handler.
    [[nodiscard]] bool takesEvents() const;

    virtual void accept(ControlVisitor &visitor) = 0;

  protected:
    CControl(CDialog &dialog, CString id, CString caption);

    void changed() { ++revision_; }
    /// Sets a member that the control shows. Setting the current value does not count as a change.
    template <class VALUE> void assign(VALUE &member, std::type_identity_t<VALUE> value) {
        if (member != value) {
            member = std::move(value);
            changed();
        }
    }

  private:
    [[nodiscard]] virtual bool isField() const { return true; }

    CDialog &dialog_;
    CString id_;
    CString caption_;
    CString toolTip_;
    std::uint64_t revision_ = 0;
    bool enabled_ = true;
    bool visible_ = true;
};
