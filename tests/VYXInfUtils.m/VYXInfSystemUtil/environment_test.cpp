#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "KORSysBase/KORResult.h"
#include "KORSysTS/QRMSysTenant.h"
#include "VYXInfSystemUtil.h"
#include "support/captured_stdout.h"
#include "support/catalog_folder.h"
#include "support/child_process.h"
#include "support/failing_host.h"
#include "support/host.h"
#include "support/pending_error.h"
#include "support/temporary_folder.h"

namespace VYX::Test {
namespace {

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;
using Util = VYXInfSystemUtil;
using Values = std::map<std::string, std::string>;

bool IsAboutUs(const KORUnicodeString& iEntry) {
  return iEntry.ToStringView().starts_with("VYX_TEST_");
}

TEST(EnumEnvVars, EntriesComeWholeAndInOrder) {
  const Environment environment(
      Values{{"VYX_TEST_A", "1=2=3"}, {"VYX_TEST_B", "line\nbreak"}, {"VYX_TEST_C", "\xC3\xA9"}});
  std::vector<KORUnicodeString> expected;
  for (const std::string& entry : HostVariables()) {
    expected.emplace_back(std::string_view(entry));
  }
  EXPECT_EQ(Util::EnumEnvVars(nullptr), expected);
  const std::vector<KORUnicodeString> ours = Util::EnumEnvVars(IsAboutUs);
  EXPECT_THAT(ours,
              UnorderedElementsAre(KORUnicodeString("VYX_TEST_A=1=2=3"), KORUnicodeString("VYX_TEST_B=line\nbreak"),
                                   KORUnicodeString("VYX_TEST_C=\xC3\xA9")));
}

TEST(EnumEnvVars, AFilterForThePathGivesJustThat) {
  const Environment environment(Values{{"PATH", "/usr/bin:/bin"}});
  const auto path =
      Util::EnumEnvVars([](const KORUnicodeString& iEntry) { return iEntry.ToStringView().starts_with("PATH="); });
  EXPECT_THAT(path, ElementsAre(KORUnicodeString("PATH=/usr/bin:/bin")));
}

TEST(EnumEnvVars, AClearedEnvironmentHasNoEntry) {
  const ChildResult child = RunInChild([] {
    ClearEnvironment();
    std::_Exit(Util::EnumEnvVars(nullptr).empty() ? 0 : 1);
  });
  EXPECT_TRUE(child.IsGood());
}

TEST(GetInstallPaths, IsTheVariable) {
  const Environment set(Values{{"KORInstallPath", "/opt/a:/opt/b;C:\\c"}});
  EXPECT_EQ(Util::GetInstallPaths(), "/opt/a:/opt/b;C:\\c");
  const Environment unset(Values{{"KORInstallPath", ""}});
  EXPECT_EQ(Util::GetInstallPaths(), "");
}

TEST(GetExecutablePath, IsTheFolderWithBackslashes) {
  std::string folder = OwnProgramPath();
  folder.resize(folder.find_last_of("\\/"));
  for (char& character : folder) {
    character = character == '/' ? '\\' : character;
  }
  KORUnicodeString answer("untouched");
  EXPECT_EQ(Util::GetExecutablePath(answer), S_OK);
  EXPECT_EQ(answer, folder.c_str());
}

TEST(GetExecutablePath, AFailureIsTracedAndLeavesTheOutput) {
  CapturedStdout captured;
  KORUnicodeString answer("untouched");
  {
    const FailingHost failing(FailingHost::Service::ProgramPath);
    EXPECT_EQ(Util::GetExecutablePath(answer), E_FAIL);
  }
  EXPECT_EQ(answer, "untouched");
  EXPECT_THAT(captured.LogLines(), ElementsAre(FailureReturnIn("VYXInfSystemUtil/environment.cpp")));
}

// The tenant's file in a folder of its own.
class Tenant : public ::testing::Test {
 protected:
  std::string Write(const std::string& iText) { return _folder.MakeFile("tenant.json", iText); }

  TemporaryFolder _folder;
};

TEST_F(Tenant, WithoutAFileThereIsNone) {
  const Environment environment(Values{{"QRMSysTenantFile", ""}, {"QRMSysCloud", ""}});
  CapturedStdout captured;
  KORUnicodeString url("untouched");
  EXPECT_FALSE(Util::IsCloudClient());
  EXPECT_EQ(Util::GetDweldAuthoringUrl(url), E_FAIL);
  EXPECT_EQ(url, "untouched");
  EXPECT_EQ(captured.Text(), "") << "the failing query is silent";
  EXPECT_EQ(TakePendingError(VYX::ResultCode(0x80070002U)),
            "Cannot read the tenant's data: the environment variable QRMSysTenantFile names no file");
}

TEST_F(Tenant, TheFileTellsServicesAndCloud) {
  const std::string file = Write(
      "{\"cloud\": true, \"tenant\": \"R42\", \"services\": {\"16\": \"https://a.example/r42\", \"3\": \"x\"},"
      " \"more\": [1]}");
  const Environment environment(Values{{"QRMSysTenantFile", file}, {"QRMSysCloud", ""}});
  KORUnicodeString url;
  EXPECT_TRUE(Util::IsCloudClient());
  EXPECT_EQ(Util::GetDweldAuthoringUrl(url), S_OK);
  EXPECT_EQ(url, "https://a.example/r42");
  QRMSysTenantData data;
  EXPECT_EQ(QRMSysGetCurrentTenantData(data), S_OK);
  EXPECT_EQ(data.GetTenant(), "R42");
  EXPECT_EQ(data.GetMappedService(static_cast<MappedServices>(3)), "x");
  EXPECT_EQ(data.GetMappedService(static_cast<MappedServices>(4)), "");
}

TEST_F(Tenant, AServiceWithoutAddressIsTheEmptyText) {
  const Environment environment(Values{{"QRMSysTenantFile", Write("{}")}, {"QRMSysCloud", ""}});
  KORUnicodeString url("untouched");
  EXPECT_EQ(Util::GetDweldAuthoringUrl(url), S_OK);
  EXPECT_EQ(url, "");
  EXPECT_FALSE(Util::IsCloudClient());
}

TEST_F(Tenant, TheVariableOverrulesTheFile) {
  struct Row {
    const char* flag;
    const char* file;
    bool isCloud;
  };
  const Row kRows[] = {{"1", "{\"cloud\": false}", true},   {"true", "{}", true},
                       {"0", "{\"cloud\": true}", false},   {"yes", "{\"cloud\": true}", false},
                       {"", "{\"cloud\": true}", true},     {"", "{\"cloud\": false}", false},
                       {"", "{\"cloud\": \"true\"}", false}};
  for (const Row& row : kRows) {
    const Environment environment(Values{{"QRMSysTenantFile", Write(row.file)}, {"QRMSysCloud", row.flag}});
    EXPECT_EQ(Util::IsCloudClient(), row.isCloud) << "'" << row.flag << "' " << row.file;
  }
}

TEST_F(Tenant, AnUnusableFileIsRefusedWithItsReason) {
  struct Row {
    const char* text;
    const char* reason;
  };
  const Row kRows[] = {{"[]", "it holds no object"},
                       {"{\"services\": 1}", "'services' is no object"},
                       {"{\"services\": {\"16\": 1}}", "the address of service '16' is no text"},
                       {"{\"cloud\": 1}", "'cloud' is no truth value"},
                       {"{\"tenant\": 1}", "'tenant' is no text"}};
  for (const Row& row : kRows) {
    const std::string file = Write(row.text);
    const Environment environment(Values{{"QRMSysTenantFile", file}, {"QRMSysCloud", ""}});
    QRMSysTenantData data;
    EXPECT_EQ(QRMSysGetCurrentTenantData(data), E_FAIL) << row.text;
    EXPECT_EQ(TakePendingError(E_FAIL), "Cannot read the tenant's data in '" + file + "': " + row.reason);
    EXPECT_FALSE(Util::IsCloudClient()) << row.text;
  }
}

TEST_F(Tenant, AFileThatIsMissingOrNoJsonIsRefused) {
  const std::string missing = _folder.Native("missing.json");
  QRMSysTenantData data;
  {
    const Environment environment(Values{{"QRMSysTenantFile", missing}});
    EXPECT_EQ(QRMSysGetCurrentTenantData(data), E_FAIL);
    EXPECT_EQ(TakePendingError(E_FAIL),
              "Cannot read the tenant's data in '" + missing + "': No such file or directory");
  }
  const std::string broken = Write("{\n  \"cloud\": }");
  const Environment environment(Values{{"QRMSysTenantFile", broken}});
  EXPECT_EQ(QRMSysGetCurrentTenantData(data), E_FAIL);
  EXPECT_TRUE(
      TakePendingError(E_FAIL).starts_with("Cannot read the tenant's data in '" + broken + "': line 2, column "));
}

}  // namespace
}  // namespace VYX::Test
