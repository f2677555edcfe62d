#include "plugin/rules/PluginFilmsParams.h"

#include <gmock/gmock.h>

using ::testing::Each;

TEST(PluginFilmsParamsTest, FindNeedsBothNames) {
    CPluginFilmsParams params;
    params.Set("Film", nullptr, 1, CPluginFilmsParams::kExpanded, "Crate");
    std::uint8_t expanded = 0;
    EXPECT_NE(params.Find("Film", "Crate", &expanded), nullptr);
    EXPECT_EQ(expanded, 1);
    EXPECT_EQ(params.Find("Film", "Other", &expanded), nullptr);
    EXPECT_EQ(params.Find("film", "Crate", &expanded), nullptr);
}

TEST(PluginFilmsParamsTest, UnknownPairIsAppendedWhateverIsNamed) {
    CPluginFilmsParams params;
    params.Set("Film", nullptr, 1, CPluginFilmsParams::kFilter, "Crate"); // the byte goes in all the same
    EXPECT_EQ(params.records.front().expanded, 1);
    EXPECT_THAT(params.records.front().keyFilter, Each(1));
    KeyFilter filter;
    filter.fill(0);
    params.Set("Film", filter.data(), 0, CPluginFilmsParams::kExpanded, "Other"); // and so does the filter
    EXPECT_THAT(params.records.back().keyFilter, Each(0));
    params.Set("Film", filter.data(), 0, 0, "Third");
    EXPECT_EQ(params.records.size(), 3u);
}

TEST(PluginFilmsParamsTest, KnownPairTakesOnlyWhatIsNamed) {
    CPluginFilmsParams params;
    params.Set("Film", nullptr, 0, 3, "Crate");
    KeyFilter filter;
    filter.fill(0);
    params.Set("Film", filter.data(), 1, CPluginFilmsParams::kExpanded, "Crate");
    EXPECT_EQ(params.records.front().expanded, 1);
    EXPECT_THAT(params.records.front().keyFilter, Each(1));
    std::uint8_t* stored = params.Set("Film", filter.data(), 0, CPluginFilmsParams::kFilter, "Crate");
    EXPECT_EQ(stored, params.records.front().keyFilter.data());
    EXPECT_EQ(params.records.front().expanded, 1);
    EXPECT_THAT(params.records.front().keyFilter, Each(0));
    params.Set("Film", nullptr, 0, CPluginFilmsParams::kFilter, "Crate"); // null means all
    EXPECT_THAT(params.records.front().keyFilter, Each(1));
    EXPECT_EQ(params.records.size(), 1u);
}

TEST(PluginFilmsParamsTest, RemoveFilmTakesTheFirstRecordOnly) {
    CPluginFilmsParams params;
    params.Set("A", nullptr, 0, 3, "1");
    params.Set("B", nullptr, 0, 3, "1");
    params.Set("B", nullptr, 0, 3, "2");
    params.RemoveFilm("B");
    ASSERT_EQ(params.records.size(), 2u);
    EXPECT_EQ(params.records.back().objectName, "2");
    params.RemoveFilm("C");
    params.Clear();
    EXPECT_TRUE(params.records.empty());
}
