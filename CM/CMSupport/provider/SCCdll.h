// SCCdll: binds a provider's library. Each entry is called like the function of the same name in CM/scc/scc.h.
#pragma once

#include "CM/CMSupport/provider/PDLL.h"
#include "CM/CMSupport/provider/SccEntry.h"
#include "CM/scc/scc.h"

#include <array>

class SCCdll : public PDLL {
    static constexpr auto required = SccEntryBase::Need::required;
    static constexpr auto optional = SccEntryBase::Need::optional;
    template <class FUNCTION> using Entry = SccEntry<FUNCTION>;

  public:
    // clang-format off
    Entry<decltype(::SccInitialize)>        SccInitialize       {*this, "SccInitialize",        required};
    Entry<decltype(::SccGetProjPath)>       SccGetProjPath      {*this, "SccGetProjPath",       optional};
    Entry<decltype(::SccOpenProject)>       SccOpenProject      {*this, "SccOpenProject",       required};
    Entry<decltype(::SccUninitialize)>      SccUninitialize     {*this, "SccUninitialize",      required};
    Entry<decltype(::SccCheckout)>          SccCheckout         {*this, "SccCheckout",          required};
    Entry<decltype(::SccCheckin)>           SccCheckin          {*this, "SccCheckin",           required};
    Entry<decltype(::SccAdd)>               SccAdd              {*this, "SccAdd",               required};
    Entry<decltype(::SccPopulateList)>      SccPopulateList     {*this, "SccPopulateList",      optional};
    Entry<decltype(::SccGetCommandOptions)> SccGetCommandOptions{*this, "SccGetCommandOptions", optional};
    Entry<decltype(::SccCloseProject)>      SccCloseProject     {*this, "SccCloseProject",      required};
    Entry<decltype(::SccGet)>               SccGet              {*this, "SccGet",               required};
    Entry<decltype(::SccHistory)>           SccHistory          {*this, "SccHistory",           optional};
    Entry<decltype(::SccProperties)>        SccProperties       {*this, "SccProperties",        optional};
    Entry<decltype(::SccQueryInfo)>         SccQueryInfo        {*this, "SccQueryInfo",         optional};
    Entry<decltype(::SccUncheckout)>        SccUncheckout       {*this, "SccUncheckout",        required};
    Entry<decltype(::SccRename)>            SccRename           {*this, "SccRename",            optional};
    Entry<decltype(::SccRemove)>            SccRemove           {*this, "SccRemove",            optional};
    Entry<decltype(::SccSetOption)>         SccSetOption        {*this, "SccSetOption",         optional};
    // Extensions of one family of providers.
    Entry<decltype(::SccCheckinTask)>       SccCheckinTask      {*this, "SccCheckinTask",       optional};
    Entry<decltype(::SccSetTask)>           SccSetTask          {*this, "SccSetTask",           optional};
    Entry<decltype(::SccGetDefaultTask)>    SccGetDefaultTask   {*this, "SccGetDefaultTask",    optional};
    Entry<decltype(::SccCreateTask)>        SccCreateTask       {*this, "SccCreateTask",        optional};
    Entry<decltype(::SccShowTask)>          SccShowTask         {*this, "SccShowTask",          optional};
    Entry<decltype(::SccListTasks)>         SccListTasks        {*this, "SccListTasks",         optional};
    // clang-format on

    /// Returns all entries in the order above, to find out what a loaded library exports.
    [[nodiscard]] std::array<SccEntryBase *, 24> entries();
};
