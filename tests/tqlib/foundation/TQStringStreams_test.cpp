#include "tqlib/foundation/TQStringStreams.h"

#include <gtest/gtest.h>

#include "support/Files.h"
#include "tqplatform/streams/ifstream.h"
#include "tqplatform/streams/ofstream.h"

namespace {

TEST(TQStringStreams, AWordStopsAtItsRoom) {
    TemporaryFolder const folder;
    {
        classic::ofstream out(folder.file("a").c_str());
        out << TQString("short ") << TQString('x', 300);
    }
    classic::ifstream in(folder.file("a").c_str());
    TQString text;
    in >> text;
    EXPECT_EQ(text, "short");
    in >> text;
    EXPECT_EQ(text, TQString('x', 255));
    in >> text;
    EXPECT_EQ(text, TQString('x', 45));
    in >> text;
    EXPECT_EQ(text, "");
    EXPECT_TRUE(in.fail());
}

}  // namespace
