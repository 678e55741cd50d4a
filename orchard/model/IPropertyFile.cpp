// Implements the one member of IProperty that uses the model, separately from those that do not.
#include "CM/host/IProject.h"
#include "CM/host/IProperty.h"

IFile *IProperty::getFile() const { return dynamic_cast<IFile *>(IUnit::getByFile(getValue())); }
