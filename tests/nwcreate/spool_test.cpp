// The temporary file of a scene, from inside.
#include "nwcreate/store/spool.h"
#include "support/scratch_folder.h"
#include "tolmar/file.h"

#include <gtest/gtest.h>

#include <new>

namespace {

// A piece that no memory can hold is refused, and what comes next has its place.
TEST(Spool, StandsAfterMemoryHasRunOut) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer ends the process at a request of that size";
#endif
    const ScratchFolder folder;
    nwcreate::Spool spool(folder.path().string());
    spool.append("before ");
    EXPECT_THROW(spool.room(std::size_t{1} << 62U), std::bad_alloc);
    spool.append("behind");
    EXPECT_TRUE(spool.equals(0, "before behind"));
    spool.settle();
    EXPECT_THROW(spool.room(std::size_t{1} << 62U), std::bad_alloc);
    spool.append(".");
    EXPECT_TRUE(spool.equals(0, "before behind."));
    EXPECT_EQ(spool.failure(), "");
    tolmar::OutputFile file(folder.file("copy"), tolmar::FileMode::Binary);
    EXPECT_TRUE(spool.copyTo(file) && file.close());
    EXPECT_EQ(folder.get("copy"), "before behind.");
}

}  // namespace
