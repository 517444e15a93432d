// PNG files that are whole, with right checksums throughout, whose content a decoder
// may still turn down: lengths and checksums do not prove that a picture comes out.
#include "judged_file.h"
#include "png_writer.h"

namespace {

using png::Bytes;
using png::Chunk;
using png::End;
using png::Header;
using png::HeaderContent;
using png::Joined;
using png::Lines;
using png::Signature;
using png::Stored;
using png::Whole;

struct Row {
  const char* name;
  Bytes file;
};

void PrintTo(const Row& row, std::ostream* out) {
  *out << row.name;
}

Header With(int Header::*field, int value) {
  Header header;
  header.*field = value;
  return header;
}

Header Sides(std::uint32_t width, std::uint32_t height) {
  Header header;
  header.width = width;
  header.height = height;
  return header;
}

Header Kind(int colourType, int depth) {
  Header header;
  header.colourType = colourType;
  header.depth = depth;
  return header;
}

Bytes Start(const Header& header) {
  return Joined({Signature(), Chunk("IHDR", HeaderContent(header))});
}

// The sound picture's stream with one byte changed.
Bytes Changed(std::size_t at, int value) {
  Bytes stream = Stored(Lines(3, 12));
  stream[at] = static_cast<unsigned char>(value);
  return Whole({}, stream);
}

const Bytes kSound = Stored(Lines(3, 12));
const Bytes kIndices = Stored(Lines(3, 4, 0, 1));
const Bytes kTwoColours = {10, 20, 30, 40, 50, 60};
const Header kPalette = Kind(3, 8);

// Every one of them has a picture of 4 x 3.
const Row kSoundRows[] = {
    {"Colour", Whole({}, kSound)},
    {"Grey", Whole(Kind(0, 8), Stored(Lines(3, 4)))},
    {"GreyOfOneBit", Whole(Kind(0, 1), Stored(Lines(3, 1)))},
    {"GreyWithAlpha", Whole(Kind(4, 8), Stored(Lines(3, 8)))},
    {"ColourOf16Bits", Whole(Kind(2, 16), Stored(Lines(3, 24)))},
    {"ColourWithAlpha", Whole(Kind(6, 8), Stored(Lines(3, 16)))},
    {"EveryFilter", Whole({}, Stored(Joined({Lines(1, 12, 1), Lines(1, 12, 3), Lines(1, 12, 4)})))},
    {"Palette",
     Joined({Start(kPalette), Chunk("PLTE", kTwoColours), Chunk("IDAT", kIndices), End()})},
    {"DataInTwoChunks", Joined({Start({}), Chunk("IDAT", {kSound.begin(), kSound.begin() + 20}),
                                Chunk("IDAT", {kSound.begin() + 20, kSound.end()}), End()})},
};

const Row kBadRows[] = {
    // Fields of the header.
    {"ColourType1", Whole(With(&Header::colourType, 1), kSound)},
    {"ColourType5", Whole(With(&Header::colourType, 5), kSound)},
    {"ColourType7", Whole(With(&Header::colourType, 7), kSound)},
    {"Depth0", Whole(With(&Header::depth, 0), kSound)},
    {"Depth3", Whole(With(&Header::depth, 3), kSound)},
    {"Depth32", Whole(With(&Header::depth, 32), kSound)},
    {"ColourOf4Bits", Whole(Kind(2, 4), kSound)},
    {"PaletteOf16Bits", Whole(Kind(3, 16), kSound)},
    {"Compression1", Whole(With(&Header::compression, 1), kSound)},
    {"FilterMethod1", Whole(With(&Header::filter, 1), kSound)},
    {"Interlace2", Whole(With(&Header::interlace, 2), kSound)},
    {"InterlaceWithoutItsLines", Whole(With(&Header::interlace, 1), kSound)},
    {"NoWidth", Whole(Sides(0, 3), kSound)},
    {"NoHeight", Whole(Sides(4, 0), kSound)},
    {"WidthOf31Bits", Whole(Sides(0x7FFFFFFF, 3), kSound)},
    {"WidthOf32Bits", Whole(Sides(0xFFFFFFFF, 3), kSound)},
    {"WidthAboveAMillion", Whole(Sides(1000001, 3), kSound)},
    {"HeightAboveAMillion", Whole(Sides(4, 1000001), kSound)},
    // Order and number of chunks.
    {"HeaderOf12Bytes", Joined({Signature(), Chunk("IHDR", Bytes(12, 1)), Chunk("IDAT", kSound)})},
    {"HeaderOf14Bytes", Joined({Signature(), Chunk("IHDR", Joined({HeaderContent({}), {0}})),
                                Chunk("IDAT", kSound), End()})},
    {"NoHeader", Joined({Signature(), Chunk("IDAT", kSound), End()})},
    {"TwoHeaders",
     Joined({Start({}), Chunk("IHDR", HeaderContent({})), Chunk("IDAT", kSound), End()})},
    {"DataBeforeTheHeader",
     Joined({Signature(), Chunk("IDAT", kSound), Chunk("IHDR", HeaderContent({})), End()})},
    {"UnknownNeededChunk", Joined({Start({}), Chunk("ABCD", {1}), Chunk("IDAT", kSound), End()})},
    {"NoPalette", Whole(kPalette, kIndices)},
    {"PaletteOf4Bytes",
     Joined({Start(kPalette), Chunk("PLTE", {1, 2, 3, 4}), Chunk("IDAT", kIndices), End()})},
    {"EmptyPalette", Joined({Start(kPalette), Chunk("PLTE", {}), Chunk("IDAT", kIndices), End()})},
    {"PaletteBehindTheData",
     Joined({Start(kPalette), Chunk("IDAT", kIndices), Chunk("PLTE", kTwoColours), End()})},
    {"IndexOutsideThePalette", Joined({Start(kPalette), Chunk("PLTE", kTwoColours),
                                       Chunk("IDAT", Stored(Lines(3, 4, 0, 9))), End()})},
    {"NoData", Joined({Start({}), End()})},
    {"EmptyData", Whole({}, {})},
    {"AnotherChunkAmongTheData",
     Joined({Start({}), Chunk("IDAT", {kSound.begin(), kSound.begin() + 20}),
             Chunk("tEXt", {'a', 0, 'b'}), Chunk("IDAT", {kSound.begin() + 20, kSound.end()}),
             End()})},
    // The compressed data.
    {"NoStream", Changed(0, 0x79)},
    {"StreamHeaderWithoutItsCheck", Changed(1, 0x02)},
    {"StreamWithADictionary", Changed(1, 0x20)},
    {"BlockOfKind3", Changed(2, 0x07)},
    {"BlockLengthWithoutItsCheck", Changed(5, 0)},
    {"WrongSum", Changed(kSound.size() - 1, 0)},
    {"CutOffData", Whole({}, {kSound.begin(), kSound.begin() + 30})},
    {"CutOffSum", Whole({}, {kSound.begin(), kSound.end() - 2})},
    {"OneLineTooFew", Whole({}, Stored(Lines(2, 12)))},
    {"OneLineTooMany", Whole({}, Stored(Lines(4, 12)))},
    {"FilterByte5", Whole({}, Stored(Lines(3, 12, 5)))},
    {"FilterByte255", Whole({}, Stored(Lines(3, 12, 255)))},
    // A copy of three bytes from four bytes back, with nothing written before.
    {"DistanceTooFar", Whole({}, png::FromBits("1100000001000110000000"))},
    {"LengthCodeThatIsNone", Whole({}, png::FromBits("11011000110000110000000"))},
};

class PngContent : public JudgedFile, public ::testing::WithParamInterface<Row> {};
class SoundPngContent : public PngContent {};

}  // namespace

TEST_P(SoundPngContent, HasASize) {
  EXPECT_EQ(ExpectAsDecoded(GetParam().file), cv::Size(4, 3));
}

TEST_P(PngContent, IsJudgedAsDecoded) {
  ExpectAsDecoded(GetParam().file);
}

// Were most of the rows readable, they would prove nothing.
TEST_F(JudgedFile, MostPngFilesOfBadContentHaveNoPicture) {
  int unreadable = 0;
  for (const Row& row : kBadRows) unreadable += ExpectAsDecoded(row.file).empty() ? 1 : 0;
  EXPECT_GE(unreadable, 25) << "of " << std::size(kBadRows);
}

const auto kRowName = [](const auto& row) { return row.param.name; };
INSTANTIATE_TEST_SUITE_P(Rows, SoundPngContent, ::testing::ValuesIn(kSoundRows), kRowName);
INSTANTIATE_TEST_SUITE_P(Rows, PngContent, ::testing::ValuesIn(kBadRows), kRowName);
