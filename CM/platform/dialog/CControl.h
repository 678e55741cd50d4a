// CControl: one field of a dialog model. A control is a member of its dialog and enters itself there, so that the
// order in which a dialog declares its members is the order in which they are shown and walked.
#pragma once

#include "CM/platform/CString.h"

class CDialog;
class CStatic;
class CIcon;
class CButton;
class CCheckBox;
class CChoice;
class CEdit;
class CListCtrl;
class CTreeCtrl;

/// One function for each kind of control; all that a driver has to know.
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

    /// The name by which scripts and drivers address the control: unique in its dialog, never shown. Buttons that
    /// answer a question are called "ok", "cancel", "yes", "no", "yesToAll", "noToAll" in every dialog.
    [[nodiscard]] const CString &id() const { return id_; }

    /// The text beside or on the control.
    [[nodiscard]] const CString &caption() const { return caption_; }
    void setCaption(CString caption) { caption_ = std::move(caption); }
    /// The longer explanation, empty without one.
    [[nodiscard]] const CString &toolTip() const { return toolTip_; }
    void setToolTip(CString text) { toolTip_ = std::move(text); }

    [[nodiscard]] bool isEnabled() const { return enabled_; }
    void EnableWindow(bool enable) { enabled_ = enable; }
    [[nodiscard]] bool isVisible() const { return visible_; }
    void ShowWindow(bool show) { visible_ = show; }
    /// Makes this the control that has the keyboard.
    void SetFocus();
    [[nodiscard]] bool hasFocus() const;

    /// Whether events of the user reach the control: visible, enabled, and its dialog open. The event functions of
    /// the controls return false and do nothing otherwise; the setters of a dialog work always and call no
    /// handler.
    [[nodiscard]] bool takesEvents() const;

    virtual void accept(ControlVisitor &visitor) = 0;

  protected:
    CControl(CDialog &dialog, CString id, CString caption);

  private:
    CDialog &dialog_;
    CString id_;
    CString caption_;
    CString toolTip_;
    bool enabled_ = true;
    bool visible_ = true;
};
