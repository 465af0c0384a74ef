#include "platform/text_io.h"

#include "folder.h"

namespace
{

template <std::size_t SIZE> string pieces_of(TextReader& reader)
{
    string pieces;
    for (char piece[SIZE]; read_piece(reader, piece);)
        pieces += "["s + piece + "]";
    return pieces;
}

string pieces_of_7(const string& text)
{
    return pieces_of<8>(reader_of(text));
}

const Case TEXTS[] = {
    {"has_no_piece_if_empty", "", ""},
    {"has_room_for_the_line_feed", "123456\n7", "[123456\n][7]"},
    {"has_no_room_for_the_line_feed", "1234567\n8", "[1234567][\n][8]"},
    {"keeps_empty_lines", "a\n\nb", "[a\n][\n][b]"},
    {"goes_on_after_a_zero_byte", "a\0b\nc"s, "[a][c]"},
};

CASES(Pieces, pieces_of_7, TEXTS);

class TextFile : public FolderTest
{
  protected:
    TextReader reader;
};

TEST_F(TextFile, IsReadAcrossTheEndOfTheBuffer)
{
    write_file("file", times(4095, "a") + "bc\nd");
    ASSERT_TRUE(open_regular_file("file", reader));
    EXPECT_EQ(pieces_of<5000>(reader), "[" + times(4095, "a") + "bc\n][d]");
    close_text_file(reader);
}

TEST_F(TextFile, IsReadUpToTheLimit)
{
    write_file("file", "1234567");
    ASSERT_TRUE(open_regular_file("file", reader));
    reader.left = 5;
    EXPECT_EQ(pieces_of<4>(reader), "[123][45]");
    close_text_file(reader);
}

TEST_F(TextFile, IsLimitedTo1MebibyteOverAllReads)
{
    write_file("file", times(1024 * 1024, "\n") + "after");
    ASSERT_TRUE(open_regular_file("file", reader));
    EXPECT_EQ(pieces_of<8>(reader).size(), 3U * 1024 * 1024);
    close_text_file(reader);
}

TEST_F(TextFile, IsFoundThroughALink)
{
    write_file("file", "text");
    std::filesystem::create_symlink("file", "link");
    ASSERT_TRUE(open_regular_file("link", reader));
    EXPECT_EQ(pieces_of<8>(reader), "[text]");
    close_text_file(reader);
}

TEST_F(TextFile, IsNeitherAFifoNorAFolder)
{
    mkfifo("fifo", 0644);
    EXPECT_FALSE(open_regular_file("fifo", reader));
    EXPECT_FALSE(open_regular_file(".", reader));
}

} // namespace
