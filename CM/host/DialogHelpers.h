// What the host gives the library's dialogs beyond the controls: its icons, trees that know the state of units, a
// sorter, and what keeps a window's layout. Free of a toolkit, as the dialogs are.
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

/// Fills `images`, emptied first, with the host's icons; `small` chooses those for lists and trees. At the indices
/// that getOverlayImage answers stand the overlays.
ORC_HOST_API void GetOrchardIconsList(CImageList &images, bool small);
/// The index of an element's icon in that list; -1 for null.
[[nodiscard]] ORC_HOST_API int oiGetObjectIcon(const IDObject *object);

/// Appends a column and returns its index.
ORC_HOST_API int AddColumn(CListCtrl &list, const CString &title, CListCtrl::Align align);
/// Sets the text of a cell, and with column 0 the icon of the row (-1 for none); a row one behind the last is
/// appended. Returns the index of the row; -1, and nothing changes, for another row or a column that isn't there.
ORC_HOST_API int AddItem(CListCtrl &list, int row, int column, const CString &text, int icon);

/// The text if it fits into `width` less `margin`, else as much of its beginning as fits in front of "...", which
/// stands alone if there is room for nothing. `widthOf` measures a text in the same unit; a longer text must not
/// be narrower. No UTF-8 character is cut.
[[nodiscard]] ORC_HOST_API CString MakeShortString(const std::function<int(std::string_view)> &widthOf,
                                                   const CString &text, int width, int margin);

/// A tree in which several items can be selected.
class CTreeCtrlMultSel : public CTreeCtrl {
  public:
    CTreeCtrlMultSel(CDialog &dialog, CString id, CString caption, Handlers handlers = {})
        : CTreeCtrl(dialog, std::move(id), std::move(caption), Selection::many, std::move(handlers)) {}
    /// The next count is made afresh. The model counts each time, so there is nothing to forget.
    void InvalidateSelectionCountCaching() {}
    [[nodiscard]] int GetSelectedCount(int /*reserved*/ = 0) const {
        return static_cast<int>(selectedItems().size());
    }
};

/// A tree whose items show the state of their units.
class ORC_HOST_API CMStateAwareTreeCtrl : public CTreeCtrlMultSel {
  public:
    using CTreeCtrlMultSel::CTreeCtrlMultSel;
    /// Gives the tree the images of the states.
    void SetUpStateImageList();
    [[nodiscard]] const CImageList &stateImages() const { return stateImages_; }
    /// The index of the state image of a unit. 0, no image, for null, for an invalid state, and while the active
    /// project does not show the state of units.
    [[nodiscard]] static int GetCMStateImageInd(const IUnit *unit);

  private:
    CImageList stateImages_;
};

/// Sorts records, each a block of pointers of which some are the texts that it can be sorted by.
class ORC_HOST_API CSorter {
  public:
    using Records = CList<void **, void **>;
    /// The records ordered by the text at `offset` bytes in each, smallest first, equal ones in their order.
    /// `compare` answers below, at or above 0 for two texts; a null text counts as empty. The records stay the
    /// caller's.
    [[nodiscard]] static Records sort(const Records &records, std::size_t offset,
                                      int (*compare)(const char *, const char *));
};

/// Loads the icons that the system has for files.
class ORC_HOST_API CShellIconLoader {
  public:
    /// Loaded icons are appended to `images`, which must outlive the loader.
    explicit CShellIconLoader(CImageList &images) : images_(images) {}
    /// The index of the icon for a file of this name, loaded once for each kind of file.
    [[nodiscard]] int DoGetShellIcon(const CString &fileName);

  private:
    CImageList &images_;
    std::unordered_map<CString, int> loaded_; ///< the index by the file's extension, in small letters
};

/// Keeps the controls of a dialog in their places while its window changes size. What shows the dialog has one, or
/// there is nothing to keep.
class CResizer {
  public:
    enum Edge : unsigned { left = 1, top = 2, right = 4, bottom = 8 };
    virtual ~CResizer() = default;
    /// Ties a control to edges of the window, an or of Edge values.
    virtual void addAnchor(const CString &controlId, unsigned edges) = 0;
    /// The window has this size now.
    virtual void onSize(int width, int height) = 0;
};

/// The grip in the corner of a window by which it is drawn larger.
class CGripControl {
  public:
    virtual ~CGripControl() = default;
    virtual void refresh() = 0;
};
