// Declares what dialogs need from the host besides controls: icons, trees that show the state of units, a sorter,
// and window layout. Independent of a toolkit, like the dialogs.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/platform/CList.h"
#include "CM/platform/CString.h"
#include "CM/platform/dialog/CImageList.h"
#include "CM/platform/dialog/CListCtrl.h"
#include "CM/platform/dialog/CTreeCtrl.h"

#include <cstddef>
#include <functional>
#include <string_view>
#include <unordered_map>

class IDObject;
class IUnit;

/// Empties `images` and fills it with the host's icons; `small` selects those for lists and trees. The overlays
/// are at the indices that getOverlayImage returns.
ORC_HOST_API void GetOrchardIconsList(CImageList &images, bool small);
/// Returns the index of an element's icon in that list; -1 for null.
[[nodiscard]] ORC_HOST_API int oiGetObjectIcon(const IDObject *object);

/// Appends a column and returns its index.
ORC_HOST_API int AddColumn(CListCtrl &list, const CString &title, CListCtrl::Align align);
/// Sets the text of a cell, and with column 0 the icon of the row (-1 for none). The row after the last one is
/// appended. Returns the index of the row; returns -1 and changes nothing for any other unknown row or column.
ORC_HOST_API int AddItem(CListCtrl &list, int row, int column, const CString &text, int icon);

/// Returns the text if it fits into `width` less `margin`, else as much of its start as fits before "...", which
/// is alone if nothing fits. `widthOf` measures a text in the same unit; a longer text must not be narrower. Never
/// cuts a UTF-8 character.
[[nodiscard]] ORC_HOST_API CString MakeShortString(const std::function<int(std::string_view)> &widthOf,
                                                   const CString &text, int width, int margin);

/// A tree in which several items can be selected.
class CTreeCtrlMultSel : public CTreeCtrl {
  public:
    CTreeCtrlMultSel(CDialog &dialog, CString id, CString caption, Handlers handlers = {})
        : CTreeCtrl(dialog, std::move(id), std::move(caption), Selection::many, std::move(handlers)) {}
    /// Does nothing, because the tree doesn't cache the count.
    void InvalidateSelectionCountCaching() {}
    [[nodiscard]] int GetSelectedCount(int /*reserved*/ = 0) const { return selectedCount(); }
};

/// A tree whose items show the state of their units.
class ORC_HOST_API CMStateAwareTreeCtrl : public CTreeCtrlMultSel {
  public:
    using CTreeCtrlMultSel::CTreeCtrlMultSel;
    /// Gives the tree the images of the states.
    void SetUpStateImageList();
    [[nodiscard]] const CImageList &stateImages() const { return stateImages_; }
    /// Returns the index of the state image of a unit; 0, no image, for null, for an invalid state, and while the
    /// active project does not show the state of units.
    [[nodiscard]] static int GetCMStateImageInd(const IUnit *unit);

  private:
    CImageList stateImages_;
};

/// Sorts records. A record is a block of pointers, some of which are texts to sort by.
class ORC_HOST_API CSorter {
  public:
    using Records = CList<void **, void **>;
    /// Returns the records sorted by the text at `offset` bytes in each, smallest first; equal ones keep their
    /// order. `compare` returns a value below, equal to or above 0; a null text counts as empty. The caller still
    /// owns the records.
    [[nodiscard]] static Records sort(const Records &records, std::size_t offset,
                                      int (*compare)(const char *, const char *));
};

/// Loads the system's icons for files.
class ORC_HOST_API CShellIconLoader {
  public:
    /// Appends loaded icons to `images`, which must outlive the loader.
    explicit CShellIconLoader(CImageList &images) : images_(images) {}
    /// Returns the index of the icon for a file of this name. Loads it once for each kind of file.
    [[nodiscard]] int DoGetShellIcon(const CString &fileName);

  private:
    CImageList &images_;
    std::unordered_map<CString, int> loaded_; ///< the index by the file's extension, in lower case
};

/// Keeps the controls of a dialog in place while its window changes size. Abstract: only a driver with windows
/// implements it.
class CResizer {
  public:
    enum Edge : unsigned { left = 1, top = 2, right = 4, bottom = 8 };
    virtual ~CResizer() = default;
    /// Anchors a control to edges of the window, an OR of Edge values.
    virtual void addAnchor(const CString &controlId, unsigned edges) = 0;
    /// Reports the new size of the window.
    virtual void onSize(int width, int height) = 0;
};

/// The grip in the corner of a window for changing its size. Abstract, like CResizer.
class CGripControl {
  public:
    virtual ~CGripControl() = default;
    virtual void refresh() = 0;
};
