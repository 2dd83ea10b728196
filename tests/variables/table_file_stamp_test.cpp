#include "platform/files.h"
#include "platform/save_file.h"
#include "support/temp_folder.h"
#include "variables/table_file_stamp.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

class TableFileStampTest : public testing::Test {
protected:
    TempFolder folder;
    const QString path = folder.Path("M10.PMN");
};

TEST_F(TableFileStampTest, AnUnchangedFileIsAsItWas) {
    folder.Write("M10.PMN", "table");
    const TableFileStamp stamp(path);
    EXPECT_FALSE(stamp.IsOutdated());
    folder.Write("M10.PMN", "table");
    EXPECT_FALSE(stamp.IsOutdated()) << "written again, but the same";
}

TEST_F(TableFileStampTest, AChangeOfTheSameSizeIsSeen) {
    folder.Write("M10.PMN", "table");
    const TableFileStamp stamp(path);
    folder.Write("M10.PMN", "Table");
    EXPECT_TRUE(stamp.IsOutdated());
    folder.Write("M10.PMN", "table");
    EXPECT_FALSE(stamp.IsOutdated());
}

TEST_F(TableFileStampTest, AnotherFileOfTheNameIsSeen) {
    folder.Write("M10.PMN", "table");
    const TableFileStamp stamp(path);
    ReplaceFile(path, "another");
    EXPECT_TRUE(stamp.IsOutdated());
}

TEST_F(TableFileStampTest, AFileThatCameIntoBeingIsSeen) {
    const TableFileStamp stamp(path);
    EXPECT_FALSE(stamp.IsOutdated());
    folder.Write("M10.PMN", "");
    EXPECT_TRUE(stamp.IsOutdated());
}

TEST_F(TableFileStampTest, AFileThatIsGoneLosesNothing) {
    folder.Write("M10.PMN", "table");
    const TableFileStamp stamp(path);
    DeleteFile(path);
    EXPECT_FALSE(stamp.IsOutdated());
    folder.Write("M10.PMN", "another");
    EXPECT_TRUE(stamp.IsOutdated());
}

TEST_F(TableFileStampTest, TheFileIsFoundRegardlessOfCase) {
    folder.Write("m10.pmn", "table");
    const TableFileStamp stamp(path);
    folder.Write("m10.pmn", "changed");
    EXPECT_TRUE(stamp.IsOutdated());
}

} // namespace
} // namespace velmo
