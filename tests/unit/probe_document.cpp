#include "probe/probe_document.h"

#include "cases.h"

static string document(const string& date, const string& checksum)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<tolvane date=\"" + date + "\">\n\t<checksum>" + checksum;
}

static string verdict(const string& chunk)
{
    return verify_probe_chunk(chunk.c_str()) ? "good" : "bad";
}

const string OF_ABC = "900150983cd24fb0d6963f7d28e17f72", END = "</checksum>\n</tolvane>";

const Case CHUNKS[] = {
    {"upper_case", document("abc", "900150983CD24FB0D6963F7D28E17F72" + END), "good"},
    {"checksum_of_33_characters", document("abc", OF_ABC + "0" + END), "bad"},
    {"checksum_without_end", document("abc", OF_ABC), "good"},
    {"date_of_21_characters", document("01234567890123456789+", "be497c2168e374f414a351c49379c01a"), "good"},
    {"empty_date", document("", "d41d8cd98f00b204e9800998ecf8427e"), "bad"},
    {"cut_declaration", document("abc", OF_ABC).erase(37, 1), "bad"},
};

CASES(VerifyProbeChunk, verdict, CHUNKS);

TEST(Md5sumOutput, HoldsTheDigestInItsLastLongLine)
{
    char digest[DIGEST_FIELD_SIZE] = "";
    take_digest(reader_of(times(32, "a") + "\n" + OF_ABC + "  -\n" + times(30, "b") + "\n"), digest);
    EXPECT_EQ(digest, OF_ABC);
}
