#include "platform/text_io.h"

#include <fcntl.h>

#include <csignal>

#include "folder.h"

static string pieces_of_7(TextReader& reader)
{
    string pieces;
    for (char piece[8]; read_piece(reader, piece);)
        pieces += "["s + piece + "]";
    return pieces;
}

static string pieces_in(const string& text)
{
    return pieces_of_7(reader_of(text));
}

const Case TEXTS[] = {
    {"room_for_the_line_feed", "123456\n\n7", "[123456\n][\n][7]"},
    {"no_room_for_the_line_feed", "1234567\n8", "[1234567][\n][8]"},
    {"text_after_a_zero_byte", "a\0b\nc"s, "[a][c]"},
};

CASES(Pieces, pieces_in, TEXTS);

TEST_F(FolderTest, LinkedFileIsReadAcrossTheBufferUpToItsLimit)
{
    write_file("file", times(4095, "a") + "bc\n123");
    std::filesystem::create_symlink("file", "link");
    TextReader reader;
    ASSERT_TRUE(open_regular_file("link", reader));
    EXPECT_EQ(reader.left, 1024U * 1024);
    reader.left = 4100;
    EXPECT_EQ(pieces_of_7(reader), times(585, "[aaaaaaa]") + "[bc\n][12]");
    close_text_file(reader);
}

// Opening a file whose lease another process holds waits for the lease's end (fcntl(2)), unless it must not block.
TEST_F(FolderTest, LeasedFileIsNotWaitedFor)
{
    std::signal(SIGIO, SIG_IGN); // tells the holder that its lease is in the way
    write_file("file", "text");
    std::filesystem::create_symlink("file", "link");
    const int holder = open("file", O_RDWR);
    if (fcntl(holder, F_SETLEASE, F_WRLCK) != 0)
        GTEST_SKIP() << "this file system has no leases";
    TextReader reader;
    EXPECT_FALSE(open_regular_file("link", reader));
    close(holder);
}
