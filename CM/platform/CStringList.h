// Provides a list of texts.
#pragma once

#include "CM/platform/CList.h"
#include "CM/platform/CString.h"

class CStringList : public CList<CString, const CString &> {
  public:
    using CList::CList;
};
