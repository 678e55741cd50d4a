// Defines the property names, which are the keys that administrators write in property sets. A key must not be the
// name of a template argument (archive, label, log, mode, unit...), in any letter case, or no template could refer
// to it: hence "CMArchive".
#include "CM/host/IPN.h"

const CString IPN::CM = "ConfigurationManagement";
const CString IPN::General = "General";
const CString IPN::CMGeneral = "CMGeneral";

const CString IPN::CMTool = "CMTool";

const CString IPN::CMAddMember = "AddMember";
const CString IPN::CMCheckIn = "CheckIn";
const CString IPN::CMCheckOut = "CheckOut";
const CString IPN::CMCheckOutFromArchive = "CheckOutFromArchive";
const CString IPN::CMConnectToCMRepository = "ConnectToCMRepository";
const CString IPN::CMFetch = "Fetch";
const CString IPN::CMFetchFromArchive = "FetchFromArchive";
const CString IPN::CMListArchive = "ListArchive";
const CString IPN::CMLockItem = "LockItem";
const CString IPN::CMUnLockItem = "UnLockItem";
const CString IPN::Delete = "Delete";

const CString IPN::CMArchive = "CMArchive";
const CString IPN::CMArchiveSelection = "CMArchiveSelection";

const CString IPN::CMChildThreadTimeOut = "CMChildThreadTimeOut";

const CString IPN::CMHeaderFile = "HeaderFile";
const CString IPN::CMHeaderItsLocker = "HeaderItsLocker";
const CString IPN::CMHeaderItsVersion = "HeaderItsVersion";

const CString IPN::CMListArchiveItsLocker = "ListArchiveItsLocker";
const CString IPN::CMListArchiveItsMode = "ListArchiveItsMode";
const CString IPN::CMListArchiveItsVersion = "ListArchiveItsVersion";
const CString IPN::CMListArchiveItsWorkingFile = "ListArchiveItsWorkingFile";
const CString IPN::CMMultiRecordDelimiter = "MultiRecordDelimiter";

const CString IPN::CMReadOnly = "ReadOnly";
const CString IPN::CMReadWrite = "ReadWrite";

// Not "SaveOnCheckOut", which is a key of the provider route.
const CString IPN::CMSaveOnCheckOut = "CMSaveOnCheckOut";
