#include "apps/orchard-cm/model/TemplateArguments.h"

#include "CM/CMSupport/core/CMArchive.h"
#include "CM/CMSupport/core/CMLabel.h"
#include "CM/CMSupport/core/CMLog.h"
#include "CM/CMSupport/core/CMMode.h"
#include "CM/CMSupport/core/CMTargetFile.h"
#include "CM/CMSupport/core/CMUnit.h"

namespace orchard_cm {

void TemplateArguments::add(std::unique_ptr<CMArgument> argument) {
    list_.AddTail(argument.get());
    owned_.push_back(std::move(argument));
}

void TemplateArguments::addMode(bool readWrite) {
    add(std::make_unique<CMMode>(readWrite ? CMMode::readWrite : CMMode::readOnly));
}
void TemplateArguments::addLabel(const std::string &label) { add(std::make_unique<CMLabel>(label)); }
void TemplateArguments::addLog(const std::string &log) { add(std::make_unique<CMLog>(log)); }
void TemplateArguments::addTargetDirectory(const std::string &directory) {
    add(std::make_unique<CMTargetFile>(directory));
}
void TemplateArguments::addArchive() { add(std::make_unique<CMArchive>("")); }
void TemplateArguments::addUnit(const IUnit &unit) { add(std::make_unique<CMUnit>(&unit)); }
void TemplateArguments::addArchiveItem(const CMArchiveItem &item) { add(std::make_unique<CMUnit>(&item)); }

void TemplateArguments::removeLast() {
    list_.RemoveTail();
    owned_.pop_back();
}

} // namespace orchard_cm
