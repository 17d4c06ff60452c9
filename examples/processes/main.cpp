// Processes: this program starts itself as a child, with arguments that no shell takes apart.

#include <iostream>

#include "VYXInfSystemUtil.h"

/// What the child does: it shows its argument and answers a number.
static int BeChild(const char* iArgument) {
  std::cout << "child got <" << iArgument << ">\n";
  return 7;
}

int main(int iCount, char** iArguments) {
  if (iCount > 1) {
    return BeChild(iArguments[1]);
  }

  KORListValKORUnicodeString arguments;
  arguments.Append("one \"argument\"; with *everything*");
  int pid = 0;
  int exitCode = 0;
  if (VYXInfSystemUtil::StartProcess(iArguments[0], arguments, true, &pid, &exitCode) != KORLibSuccess) {
    return 1;
  }
  std::cout << "child ended with " << exitCode << "\n";

  std::vector<VYXInfSystemUtil::ProcessInfo> children;
  VYXInfSystemUtil::ProcessInfo parent;
  if (VYXInfSystemUtil::GetSubProcesses(children, VYXInfSystemUtil::GetPID(), "*") < 0 ||
      VYXInfSystemUtil::GetParentProcess(VYXInfSystemUtil::GetPID(), parent) < 0) {
    return 1;
  }
  std::cout << children.size() << " children left, and a parent "
            << (parent.id > 0 ? "that lives\n" : "that is gone\n");
  return 0;
}
