#include "apps/orchard-cm/base/StatusLine.h"

#include <gtest/gtest.h>

#include <sstream>

using orchard_cm::StatusLine;

TEST(StatusLine, IsTakenAwayBeforeText) {
    std::ostringstream terminal;
    StatusLine status(terminal, true);
    status.show("[1/2] Pump");
    status.stream() << "co: done\n" << std::flush;
    EXPECT_EQ(terminal.str(), "[1/2] Pump\r\x1b[Kco: done\n");
}
TEST(StatusLine, IsNeverShownWithoutATerminal) {
    std::ostringstream file;
    StatusLine status(file, false);
    status.show("[1/2] Pump");
    status.stream() << "text" << std::flush;
    EXPECT_EQ(file.str(), "text");
}
TEST(StatusLine, IsRedrawnOnlyNowAndThen) {
    std::ostringstream terminal;
    StatusLine status(terminal, true);
    status.show("[1/9]");
    status.show("[2/9]");
    EXPECT_EQ(terminal.str(), "[1/9]");
}
TEST(StatusLine, IsGoneAtTheEnd) {
    std::ostringstream terminal;
    { StatusLine(terminal, true).show("[1/9]"); }
    EXPECT_EQ(terminal.str(), "[1/9]\r\x1b[K");
}
TEST(StatusLine, IsCutBeforeItWrapsAndNotWithinACharacter) {
    std::ostringstream terminal;
    StatusLine status(terminal, true);
    status.show(std::string(77, 'x') + "Öl");
    EXPECT_EQ(terminal.str(), std::string(77, 'x'));
}
