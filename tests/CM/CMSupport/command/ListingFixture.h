// Sets up the tests of listings: a tool whose listing has one line per file,
// "file: PATH rev: VERSION mode: rw locker: NAME".
#pragma once

#include "CM/CMSupport/core/CMArchiveItem.h"
#include "tests/CM/CMSupport/command/CheckOutFixture.h"

#include <string>
#include <vector>

class ListingFixture : public CheckOutFixture {
  protected:
    ListingFixture() {
        setToolProperty(IPN::CMListArchive, "list $archive");
        setToolProperty(IPN::CMArchive, "/archives/plant");
        setToolProperty(IPN::CMMultiRecordDelimiter, "\n");
        setToolProperty(IPN::CMListArchiveItsWorkingFile, "file: ([^:]*?)(?: rev:| mode:| locker:|$)");
        setToolProperty(IPN::CMListArchiveItsVersion, "rev: ([0-9.]*)");
        setToolProperty(IPN::CMListArchiveItsMode, "mode: rw");
        setToolProperty(IPN::CMListArchiveItsLocker, "locker: (\\w*)");
    }

    /// Returns an item as one text: path, version, mode, locker, status.
    static std::string textOf(const CMArchiveItem &item) {
        return item.getFileNameWithPath().str() + "|" + item.getVersion().str() + "|" +
               std::to_string(static_cast<int>(item.getMode())) + "|" + item.getLocker().str() + "|" +
               item.getStatus().str();
    }
};
