// The one member of IProperty that looks into the model stands apart from those that don't.
#include "CM/host/IProject.h"
#include "CM/host/IProperty.h"

IFile *IProperty::getFile() const { return dynamic_cast<IFile *>(IUnit::getByFile(getValue())); }
