// Defines the texts of the property names and the names of the kinds of unit.
#include "CM/host/IPN.h"
#include "CM/host/IProject.h"
#include "tests/support/recording_host/RecordingHost.h"

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
const CString IPN::CMArchiveSelection = "ArchiveSelection";
const CString IPN::CMChildThreadTimeOut = "ChildThreadTimeOut";
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
// Not the name of the property: "SaveOnCheckOut" is a key of the provider route.
const CString IPN::CMSaveOnCheckOut = "SaveBeforeCheckOut";

namespace {

recording::ModelState &model() { return RecordingHost::current().model; }

} // namespace

CString IProject::staticGetNewFileExtension() { return model().projectExtension.newer; }
CString IProject::staticGetOldFileExtension() { return model().projectExtension.older; }
CString IProject::staticGetFolderExtension() { return model().folderExtension; }
CString IFolder::staticGetNewFileExtension() { return model().subsystemExtension.newer; }
CString IFolder::staticGetOldFileExtension() { return model().subsystemExtension.older; }
CString IComponent::staticGetNewFileExtension() { return model().componentExtension.newer; }
CString IComponent::staticGetOldFileExtension() { return model().componentExtension.older; }
CString IFile::staticGetNewFileExtension() { return model().fileExtension.newer; }
CString IFile::staticGetOldFileExtension() { return model().fileExtension.older; }

CString IProject::fileExtension2UnitType(const CString &extension) {
    const auto found = model().unitTypes.find(extension);
    return found == model().unitTypes.end() ? CString() : found->second;
}
CString IFile::usrClassName() { return model().fileClassName; }
bool IProject::isUsingTSV() { return model().usingTSV; }
