// Declares the host's table of property names: subject and metaclasses, then keys.
#pragma once

#include "CM/host/HostApi.h"
#include "CM/platform/CString.h"

struct ORC_HOST_API IPN {
    static const CString CM;        ///< subject of all CM properties, "ConfigurationManagement"
    static const CString General;   ///< metaclass "General"
    static const CString CMGeneral; ///< metaclass of values for all tools

    static const CString CMTool; ///< name of the tool

    static const CString CMAddMember; ///< command templates, up to and including `Delete`
    static const CString CMCheckIn;
    static const CString CMCheckOut;
    static const CString CMCheckOutFromArchive;
    static const CString CMConnectToCMRepository;
    static const CString CMFetch;
    static const CString CMFetchFromArchive;
    static const CString CMListArchive;
    static const CString CMLockItem;
    static const CString CMUnLockItem;
    static const CString Delete;

    static const CString CMArchive;          ///< the archive path
    static const CString CMArchiveSelection; ///< "Directory" or "File"

    static const CString CMChildThreadTimeOut; ///< limit of a tool's run in milliseconds, as decimal text

    static const CString CMHeaderFile;      ///< path of the file with the default header
    static const CString CMHeaderItsLocker; ///< patterns on a header
    static const CString CMHeaderItsVersion;

    static const CString CMListArchiveItsLocker; ///< patterns on list output
    static const CString CMListArchiveItsMode;
    static const CString CMListArchiveItsVersion;
    static const CString CMListArchiveItsWorkingFile;
    static const CString CMMultiRecordDelimiter; ///< delimiter of records in list output

    static const CString CMReadOnly; ///< mode texts
    static const CString CMReadWrite;

    static const CString CMSaveOnCheckOut; ///< boolean: save the model before a check out
};
