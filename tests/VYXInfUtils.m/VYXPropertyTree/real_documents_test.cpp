#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "KORSysBase/KORResult.h"
#include "VYXPropertyTree.h"
#include "support/real_documents.h"
#include "support/temporary_folder.h"
#include "tree_testing.h"

namespace VYX::Test {
namespace {

class TreeOfRealDocuments : public RealDocuments {};

TEST_F(TreeOfRealDocuments, SurviveTextAndCopy) {
  for (const std::string& path : _paths) {
    SCOPED_TRACE(path);
    VYXPropertyTree tree;
    ASSERT_EQ(tree.Parse(KORUnicodeString(std::string_view(ContentOf(path)))), S_OK);
    const VYXPropertyTree copy(tree);
    EXPECT_TRUE(copy == tree);
    VYXPropertyTree again;
    ASSERT_EQ(again.Parse(VYXPropertyTreeUtils::Stringify(tree)), S_OK);
    EXPECT_TRUE(again == tree);
  }
}

TEST_F(TreeOfRealDocuments, ReadAlikeByPython) {
  if (std::string_view(VYX_PYTHON).empty()) {
    GTEST_SKIP() << "no python3 was found when the build was configured";
  }
  const TemporaryFolder folder;
  for (const std::string& path : _paths) {
    SCOPED_TRACE(path);
    VYXPropertyTree tree;
    ASSERT_EQ(tree.Parse(KORUnicodeString(std::string_view(ContentOf(path)))), S_OK);
    const std::string output = folder.MakeFile("output.json", TextOf(tree));
    const std::string command =
        std::string("'" VYX_PYTHON "' -B '" VYX_COMPARE_JSON "' '") + path + "' '" + output + "'";
    EXPECT_EQ(std::system(command.c_str()), 0);
  }
}

}  // namespace
}  // namespace VYX::Test
