#include "CM/host/DialogHelpers.h"

namespace {

/// Whether a character begins at this place: in UTF-8, the further bytes of a character have 10 as their two
/// highest bits.
bool isCharacterStart(std::string_view text, std::size_t place) {
    return place >= text.size() || (static_cast<unsigned char>(text[place]) & 0xC0U) != 0x80U;
}

} // namespace

int AddColumn(CListCtrl &list, const CString &title, CListCtrl::Align align) {
    list.InsertColumn(title, align);
    return static_cast<int>(list.columns().size()) - 1;
}

int AddItem(CListCtrl &list, int row, int column, const CString &text, int icon) {
    const int rows = list.GetItemCount();
    if (row < 0 || row > rows || column < 0 || column >= static_cast<int>(list.columns().size())) {
        return -1;
    }
    if (row == rows) {
        list.InsertItem({});
    }
    list.SetItemText(row, column, text);
    if (column == 0) {
        ItemImages images = list.GetItemImages(row);
        images.icon = icon;
        list.SetItemImages(row, images);
    }
    return row;
}

CString MakeShortString(const std::function<int(std::string_view)> &widthOf, const CString &text, int width,
                        int margin) {
    const int room = width - margin;
    if (widthOf(text.view()) <= room) {
        return text;
    }
    const auto shortened = [&text](std::size_t length) {
        return CString(std::string(text.view().substr(0, length)) + "...");
    };
    // Finds the longest prefix that fits by bisection: a longer prefix is never narrower.
    std::size_t fits = 0;
    for (std::size_t tooLong = text.view().size(); tooLong - fits > 1;) {
        const std::size_t middle = fits + (tooLong - fits) / 2;
        (widthOf(shortened(middle).view()) <= room ? fits : tooLong) = middle;
    }
    while (!isCharacterStart(text.view(), fits)) {
        --fits;
    }
    return shortened(fits);
}
