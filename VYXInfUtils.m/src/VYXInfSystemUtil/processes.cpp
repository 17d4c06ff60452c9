#include "platform/os/processes.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "VYXInfSystemUtil.h"
#include "internal/FailureTrace.h"

using VYX::Internal::CatchAtBoundary;
using VYX::Internal::FailureReturn;
using VYX::Internal::LogUnlessFiltered;
using VYX::Os::ProcessClass;

namespace {

const std::map<VYXInfSystemUtil::ProcessPriority, ProcessClass>& PriorityTable() {
  using Priority = VYXInfSystemUtil::ProcessPriority;
  static const std::map<Priority, ProcessClass> table = {{Priority::High, ProcessClass::High},
                                                         {Priority::AboveNormal, ProcessClass::AboveNormal},
                                                         {Priority::Normal, ProcessClass::Normal},
                                                         {Priority::BelowNormal, ProcessClass::BelowNormal},
                                                         {Priority::Idle, ProcessClass::Idle}};
  return table;
}

}  // namespace

long VYXInfSystemUtil::GetParentProcess(int iPid, ProcessInfo& oParent) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    LogUnlessFiltered(TRACE, "Getting parent process of ", iPid);
    if (iPid < 1) {
      return FailureReturn(VYX_HERE, E_FAIL);
    }
    VYX::Os::ProcessId parent = 0;
    if (!VYX::Os::FindParent(iPid, parent).IsOk() || parent == 0) {
      return FailureReturn(VYX_HERE, E_FAIL);
    }
    std::string path;
    if (!VYX::Os::ProgramPath(parent, path).IsOk()) {
      return FailureReturn(VYX_HERE, E_FAIL);
    }
    oParent.name = GetFileNameFromPath(KORUnicodeString(std::string_view(path)));
    oParent.id = parent;
    return S_OK;
  });
}

long VYXInfSystemUtil::GetSubProcesses(std::vector<ProcessInfo>& oChildren, int iParentPid,
                                       const KORUnicodeString& iNamePattern) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    LogUnlessFiltered(TRACE, "Listing sub-processes from ", iParentPid);
    std::vector<VYX::Os::ProcessEntry> children;
    if (!VYX::Os::ListChildren(iParentPid, children).IsOk()) {
      return FailureReturn(VYX_HERE, E_FAIL);
    }
    for (const VYX::Os::ProcessEntry& child : children) {
      KORUnicodeString name{std::string_view(child.name)};
      LogUnlessFiltered(TRACE, "Found child process ", name, " PID: ", child.id);
      if (name.WildMatch(iNamePattern, '*', '\\') == 1) {
        oChildren.push_back({child.id, std::move(name)});
      }
    }
    return S_OK;
  });
}

long VYXInfSystemUtil::KillProcess(int iPid) {
  if (iPid <= 1 || !VYX::Os::EndProcess(iPid).IsOk()) {
    return FailureReturn(VYX_HERE, E_FAIL);
  }
  return S_OK;
}

long VYXInfSystemUtil::SetCurrentProcessPriority(ProcessPriority iPriority) {
  return CatchAtBoundary(VYX_HERE, E_FAIL, [&]() -> long {
    const auto found = PriorityTable().find(iPriority);
    if (found == PriorityTable().end()) {
      return FailureReturn(VYX_HERE, E_INVALIDARG);
    }
    if (!VYX::Os::SetProcessClass(found->second).IsOk()) {
      return FailureReturn(VYX_HERE, E_FAIL, "Failed to set process priority");
    }
    return S_OK;
  });
}
