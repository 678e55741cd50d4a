// Defines a small dialog like many of the library's: a list, a tree and boxes that switch each other.
#pragma once

#include "CM/platform/dialog/CDialog.h"
#include "CM/platform/dialog/CListCtrl.h"
#include "CM/platform/dialog/CTreeCtrl.h"

#include <array>

class SampleDialog : public CDialog {
  public:
    SampleDialog() : CDialog("SampleDialog") {}

    CStatic heading{*this, "heading", "Choose the units to check out"};
    CIcon warning{*this, "warning"};
    CListCtrl units{*this,
                    "units",
                    "Units",
                    CListCtrl::Selection::many,
                    {[this] { OnUnitsChanged(); }, [this](int column) { OnColumnclickUnits(column); },
                     [this](int /*row*/) { OnOK(); }}};
    CTreeCtrl places{*this,
                     "places",
                     "Places",
                     CTreeCtrl::Selection::one,
                     {{},
                      [this](CTreeCtrl::Item &item) { OnExpandPlace(item); },
                      [this](CTreeCtrl::Item &item) { OnCheckPlace(item); },
                      {}}};
    CCheckBox lock{*this, "lock", "Lock", [this] { OnLock(); }};
    CComboBox method{*this, "method", "Compare by", [this] { OnSelchangeMethod(); }};
    CRadioGroup archive{*this, "archive", "Archive"};
    CEdit label{*this, "label", "Label"};
    CEdit comment{*this, "comment", "Comment", CEdit::Lines::many, [this] { OnChangeComment(); }};
    CButton ok{*this, "ok", "OK", [this] { OnOK(); }};
    CButton cancel{*this, "cancel", "Cancel", [this] { OnCancel(); }};
    CButton advanced{*this, "advanced", "Advanced", {}};

    bool endAtOnce = false;
    bool throwOnInit = false;
    int placesAdded = 0;

    void selectRow(int row) { units.selectRow(row, true); }

  protected:
    void OnInitDialog() override {
        if (throwOnInit) {
            throw std::runtime_error("no model");
        }
        SetWindowText("Sample");
        warning.SetIcon(CIcon::Kind::warning);
        units.DeleteAllColumns();
        units.DeleteAllItems();
        units.InsertColumn("Name");
        units.InsertColumn("Version", CListCtrl::Align::right);
        for (const auto &[name, version] : std::array<std::pair<const char *, const char *>, 3>{
                 {{"Pump", "1.2"}, {"Valve", "1.1"}, {"Motor", "1.1"}}}) {
            CListCtrl::Row row;
            row.cells = {name, version};
            units.InsertItem(std::move(row));
        }
        places.DeleteAllItems();
        auto &plant = places.InsertItem("Plant");
        plant.setMayHaveChildren(true);
        plant.setCheck(CTreeCtrl::Check::unchecked);
        method.ResetContent();
        method.AddString("header");
        method.AddString("label");
        method.SetCurSel(0);
        archive.ResetContent();
        archive.AddString("directory");
        archive.AddString("file");
        archive.enableOption(1, false);
        OnSelchangeMethod();
        OnUnitsChanged();
        comment.EnableWindow(lock.GetCheck());
        if (endAtOnce) {
            EndDialog(42);
        }
    }
    void OnOK() override {
        if (comment.isEnabled() && comment.text().IsEmpty()) {
            comment.SetFocus(); // refused: a lock wants a reason
            return;
        }
        CDialog::OnOK();
    }
    void OnUnitsChanged() { ok.EnableWindow(units.GetSelectedCount() > 0); }
    void OnColumnclickUnits(int column) { units.sortByColumn(column); }
    void OnLock() { comment.EnableWindow(lock.GetCheck()); }
    void OnSelchangeMethod() { label.ShowWindow(method.GetCurSel() == 1); }
    void OnChangeComment() { heading.setCaption("Reason: " + comment.text()); }
    void OnExpandPlace(CTreeCtrl::Item &item) {
        if (item.children().empty()) {
            ++placesAdded;
            places.InsertItem("Cooling", &item).setCheck(CTreeCtrl::Check::unchecked);
            places.InsertItem("Notes", &item);
            item.setMayHaveChildren(false);
        }
    }
    void OnCheckPlace(CTreeCtrl::Item &item) {
        if (item.parent() != nullptr) {
            item.parent()->setCheck(CTreeCtrl::Check::partly);
        }
        for (const auto &child : item.children()) {
            if (child->check() != CTreeCtrl::Check::noBox) {
                child->setCheck(item.check());
            }
        }
    }
};
