#include "publish/placement.h"

#include <gmock/gmock.h>

#include "publish/published_folder.h"

namespace publish {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class PlacementTest : public PublishedFolder {
protected:
    void Place(const std::string& name, Placement& placement) const {
        WriteBytes(work / name, "new");
        placement.Place(work / name);
    }

    fs::path before = work / "before";
};

TEST_F(PlacementTest, PutBackLeavesWhatWasThere) {
    Write("a", "old");
    Placement placement(folder, before);
    Place("a", placement);
    Place("b", placement);
    EXPECT_EQ(Read("a"), "new");
    EXPECT_TRUE(placement.PutBack());
    EXPECT_EQ(Read("a"), "old");
    EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(PlacementTest, WhereItCannotPutBackTheKeptBuildStays) {
    Write("a", "old");
    fs::create_directories(folder / "previous/1.0");
    Placement placement(folder, before);
    placement.Kept({folder / "previous/1.0", true, true});
    Place("a", placement);
    fs::remove(before / "a");
    EXPECT_FALSE(placement.PutBack());
    EXPECT_TRUE(fs::exists(folder / "previous/1.0"));
}

TEST_F(PlacementTest, PutBackRemovesOnlyTheFoldersThatItMade) {
    fs::create_directory(work / "elsewhere");
    fs::create_directory_symlink(work / "elsewhere", folder / "previous");
    fs::create_directory(folder / "previous/1.0");
    Placement placement(folder, before);
    placement.Kept({folder / "previous/1.0", true, false});
    EXPECT_TRUE(placement.PutBack());
    EXPECT_TRUE(fs::is_symlink(folder / "previous"));
    EXPECT_FALSE(fs::exists(folder / "previous/1.0"));
}

TEST_F(PlacementTest, LinkThatLeadsNowhereComesBack) {
    fs::create_symlink("nowhere", folder / "a");
    Placement placement(folder, before);
    Place("a", placement);
    EXPECT_TRUE(placement.PutBack());
    EXPECT_TRUE(fs::is_symlink(folder / "a"));
}

}  // namespace
}  // namespace publish
