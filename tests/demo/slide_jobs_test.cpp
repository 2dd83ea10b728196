#include "platform/runtime_error.h"
#include "platform/slide.h"
#include "slide_generator/slide_jobs.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace velmo {
namespace {

const QStringList kDefinition = {QStringLiteral("ボルト"), "$VAR", "V1=PRO(\"d\",10)", "$GEO", "CIRCLE 0 0 d",
                                 "DIM -d 0 d 0 d*2 \"d\""};

TEST(SlideJobs, FindsDefinitionsAndCategoryPicturesBelowSmb) {
    const TempFolder home;
    home.WriteLines(QStringLiteral("SMB\\BOLT\\B10.txt"), kDefinition);
    home.WriteLines(QStringLiteral("SMB\\A.TXT"), kDefinition);
    home.WriteLines(QStringLiteral("SMB\\README.TXT"), {"text"});
    home.WriteLines(QStringLiteral("SMB\\BOLT\\B10.PMN"), {"1"});
    home.WriteLines(QStringLiteral("SMB\\BOLT.GEO"), {"$GEO", "CIRCLE 0 0 1"});
    home.WriteLines(QStringLiteral("OUTSIDE.TXT"), kDefinition);
    const std::vector<SlideJob> jobs = FindSlideJobs(home.Path());
    ASSERT_EQ(jobs.size(), 3u);
    EXPECT_TRUE(jobs[0].slide.endsWith(QStringLiteral("SMB/A.SLD")));
    EXPECT_TRUE(jobs[1].source.endsWith(QStringLiteral("SMB/BOLT.GEO")));
    EXPECT_TRUE(jobs[2].slide.endsWith(QStringLiteral("SMB/BOLT/B10.SLD")));
}

TEST(SlideJobs, ADrawingFileGoesBeforeTheDefinition) {
    const TempFolder home;
    home.WriteLines(QStringLiteral("SMB\\A.TXT"), kDefinition);
    home.WriteLines(QStringLiteral("SMB\\A.GEO"), {"$GEO", "CIRCLE 0 0 1"});
    const std::vector<SlideJob> jobs = FindSlideJobs(home.Path());
    ASSERT_EQ(jobs.size(), 1u);
    EXPECT_TRUE(jobs[0].source.endsWith(QStringLiteral("A.GEO")));
}

TEST(SlideJobs, ASlideThatIsThereKeepsItsName) {
    const TempFolder home;
    home.WriteLines(QStringLiteral("SMB\\A.TXT"), kDefinition);
    home.Write(QStringLiteral("SMB\\a.sld"), "old");
    EXPECT_TRUE(FindSlideJobs(home.Path())[0].slide.endsWith(QStringLiteral("SMB/a.sld")));
}

TEST(SlideJobs, TheSameDefinitionAlwaysGivesTheSameBytes) {
    const TempFolder home;
    home.WriteLines(QStringLiteral("SMB\\A.TXT"), kDefinition);
    const SlideJob job = FindSlideJobs(home.Path())[0];
    const QByteArray bytes = RenderSlide(job);
    EXPECT_EQ(RenderSlide(job), bytes);
    EXPECT_GT(ReadSlide(bytes).drawing.Lines().size(), 90u);
}

TEST(SlideJobs, ErrorsNameFileAndLine) {
    const TempFolder home;
    home.WriteLines(QStringLiteral("SMB\\A.TXT"), kDefinition + QStringList{"CIRCLE 0 0 x"});
    const SlideJob job = FindSlideJobs(home.Path())[0];
    try {
        RenderSlide(job);
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Line(), 7);
        EXPECT_EQ(error.File(), job.source);
    }
}

TEST(SlideJobs, AHomeWithoutSymbolsIsAnError) {
    const TempFolder home;
    EXPECT_THROW(FindSlideJobs(home.Path()), RuntimeError);
}

} // namespace
} // namespace velmo
