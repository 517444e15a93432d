// What is torn, damaged or foreign in the folder of a journal, and what is said of it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>

#include "host/input_error.h"
#include "host/journal/crc32.h"
#include "host/journal/journal_check.h"
#include "host/journal/journal_line.h"
#include "host/journal/recorded_run.h"
#include "host/journal/recorded_scene.h"

namespace jqhost_test {
namespace {

namespace fs = std::filesystem;
using jqhost::InputError;
using jqhost::RecordedPart;
using jqhost::RecordedRun;
using nlohmann::json;
using Strings = std::vector<std::string>;

Strings Lines(const std::string& path) {
  Strings lines;
  std::ifstream stream(path);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

void WriteText(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

std::string Joined(const Strings& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

class JournalDamage : public testing::Test {
 protected:
  static constexpr std::uint64_t kSeed = 5;  // of a scene whose frames are placed

  void SetUp() override {
    const RecordedScene scene(jqhost::StitchSettings(), kSeed, 8);
    const auto journal = scene.NewJournal(m_folder);
    jqhost::PushSession session(scene.Settings());
    session.Record(*journal, [] { return jqhost::SampleSummary(); });
    for (const jqhost::SourceFrame& frame : scene.Frames()) {
      m_placed += session.Take(frame).Placed() ? 1 : 0;
    }
    journal->Close();
    ASSERT_TRUE(journal->Health().problem.empty());
    ASSERT_GE(m_placed, 5);
    m_lines = Lines(Log());
    ASSERT_EQ(static_cast<int>(m_lines.size()), m_placed);
  }

  std::string Log() const { return m_folder + "/log.txt"; }
  std::string FramePath(int number) const {
    return m_folder + "/frames/00000" + std::to_string(number) + ".png";
  }
  json Object(int line) const {
    return jqhost::DecodeLine(m_lines[static_cast<std::size_t>(line - 1)]);
  }

  // The log with this line in place of another; the CRC is right.
  void Replace(int line, const json& object) const {
    Strings lines = m_lines;
    std::string text = jqhost::EncodeLine(object);
    text.pop_back();
    lines[static_cast<std::size_t>(line - 1)] = text;
    WriteText(Log(), Joined(lines));
  }

  // Rebuilds; why that is refused, or "" and the number of frames.
  std::string Refusal(const RecordedPart& part, std::size_t* frames = nullptr,
                      Strings* torn = nullptr) const {
    try {
      RecordedRun run(m_folder, part);
      if (torn != nullptr) *torn = run.Torn();
      jqhost::PushSession session(run.Header().stitch);
      const auto rebuilt = run.Rebuild(session, false, jqhost::StopToken(), [](int) {});
      if (frames != nullptr) *frames = rebuilt->size();
    } catch (const InputError& refused) {
      return refused.what();
    }
    return "";
  }

  void ExpectRefused(const std::string& expected) const {
    const std::string why = Refusal(RecordedPart());
    EXPECT_NE(why.find(expected), std::string::npos) << why << "\nexpected: " << expected;
  }

  jqstitch_test::TemporaryFolder m_place;
  const std::string m_folder = m_place / "a run";
  Strings m_lines;
  int m_placed = 0;
};

TEST_F(JournalDamage, ATornLastLineIsDroppedAndSaid) {
  const std::string all = Joined(m_lines);
  for (const std::size_t cut : {std::size_t{1}, std::size_t{2}, m_lines.back().size()}) {
    WriteText(Log(), all.substr(0, all.size() - cut));
    std::size_t frames = 0;
    Strings torn;
    EXPECT_EQ(Refusal(RecordedPart(), &frames, &torn), "");
    EXPECT_EQ(static_cast<int>(frames), m_placed - 1);
    // The line, and its frame, which stands there without one.
    ASSERT_EQ(torn.size(), 2u);
    EXPECT_EQ(torn[0], "the last line of '" + Log() + "' is cut short");
    EXPECT_EQ(torn[1], "'" + FramePath(m_placed) + "' was not finished");
  }
}

TEST_F(JournalDamage, TornLastFramesAreDroppedAndSaid) {
  fs::resize_file(FramePath(m_placed), fs::file_size(FramePath(m_placed)) - 1);
  fs::remove(FramePath(m_placed - 1));
  std::size_t frames = 0;
  Strings torn;
  EXPECT_EQ(Refusal(RecordedPart(), &frames, &torn), "");
  EXPECT_EQ(static_cast<int>(frames), m_placed - 2);
  ASSERT_EQ(torn.size(), 2u);
  EXPECT_EQ(torn[0], "'" + FramePath(m_placed - 1) + "' is missing");
  EXPECT_NE(torn[1].find("' has "), std::string::npos) << torn[1];
  // Going on overwrites them: the numbers go on behind the last whole frame.
  RecordedRun run(m_folder, RecordedPart());
  run.Write(jqhost::JournalPace(), true)->Close();
  EXPECT_EQ(Lines(Log()).size(), m_lines.size() - 2);
}

TEST_F(JournalDamage, AFrameLostInTheMiddleIsDamage) {
  fs::remove(FramePath(2));
  const std::string why = Refusal(RecordedPart());
  EXPECT_EQ(why, "line 3 of '" + Log() + "': it comes after a frame that was lost: '" +
                     FramePath(2) + "' is missing (--until 1 uses what was recorded before it)");
}

// Real content, a bit at a time: every line, and places all over a frame's file.
TEST_F(JournalDamage, AChangedByteIsFoundAndNamed) {
  for (int line = 1; line <= m_placed; ++line) {
    Strings lines = m_lines;
    std::string& changed = lines[static_cast<std::size_t>(line - 1)];
    char& byte = changed[changed.size() / 2];
    byte = static_cast<char>(byte ^ 1);
    WriteText(Log(), Joined(lines));
    const std::string expected =
        "line " + std::to_string(line) + " of '" + Log() + "': its CRC does not match";
    ExpectRefused(expected);
    if (line == 1) continue;
    ExpectRefused("(--until " + std::to_string(line - 1) + " uses");
    RecordedPart part;
    part.until = line - 1;
    std::size_t frames = 0;
    EXPECT_EQ(Refusal(part, &frames), "");
    EXPECT_EQ(static_cast<int>(frames), line - 1);
  }
  WriteText(Log(), Joined(m_lines));
  const std::string whole = jqstitch_test::ReadFile(FramePath(3));
  for (std::size_t at = 0; at < whole.size(); at += whole.size() / 11) {
    std::string changed = whole;
    changed[at] = static_cast<char>(changed[at] ^ 0x10);
    WriteText(FramePath(3), changed);
    ExpectRefused("recorded frame 3: '" + FramePath(3) +
                  "' has changed: its CRC does not match (--until 2 uses");
  }
  WriteText(FramePath(3), whole + "x");
  ExpectRefused("has changed: it has another length");
}

// Fields that make no sense in a line whose CRC is right, so that only the checks of the
// fields themselves stand between them and the mosaic.
TEST_F(JournalDamage, FieldsAreCheckedBesidesTheCrc) {
  const auto change = [this](const char* field, const json& value) {
    json object = Object(3);
    object[field] = value;
    Replace(3, object);
    return std::string("line 3 of '") + Log() + "': its field \"" + field + "\"";
  };
  change("number", 4);
  ExpectRefused("its number is 4 where 3 comes next");
  for (const json& value : {json(-5), json("3"), json(), json(1.5), json(1e300)}) {
    ExpectRefused(change("number", value));
  }
  ExpectRefused(change("offset", {99999, 0}));
  ExpectRefused(change("offset", {200, 0}) + " is larger than a frame");
  ExpectRefused(change("offset", {1, 2, 3}));
  ExpectRefused(change("offset", {1, "2"}));
  ExpectRefused(change("place", {1 << 30, 0}));
  ExpectRefused(change("place", {-77, 31}) + " is not the place before it and the offset");
  ExpectRefused(change("size", {160, 0}));
  ExpectRefused(change("size", {200, 159}) + " is not that of the first frame");
  ExpectRefused(change("size", {70000, 139}));
  ExpectRefused(change("bytes", 0));
  ExpectRefused(change("bytes", json(UINT64_MAX)));
  ExpectRefused(change("crc", -1));
  ExpectRefused(change("matches", "many"));
  ExpectRefused(change("registered", 1));
  ExpectRefused(change("shiftShare", "wide"));
  ExpectRefused(change("bits", 99));
  ExpectRefused(change("name", 7));
  ExpectRefused(change("doubt", 7));
  change("entry", "cake");
  ExpectRefused("it is an entry of an unknown kind, \"cake\"");
  json object = Object(3);
  object.erase("crc");
  Replace(3, object);
  ExpectRefused("its field \"crc\" is missing");
  // These fit each other only when the mosaic is painted.
  change("crc", Object(3)["crc"].get<std::uint32_t>() ^ 1u);
  ExpectRefused("recorded frame 3: '" + FramePath(3) + "' has changed: its CRC does not match");
  change("mosaic", {4096, 4096});
  ExpectRefused("recorded frame 3: its field \"mosaic\" says 4096 x 4096, but");
  change("position", {1, 1});
  ExpectRefused("recorded frame 3: its field \"position\" is not where");
  change("boxMax", {1, 1});
  ExpectRefused("recorded frame 3: its fields \"boxMin\" and \"boxMax\"");
  // An offset and the places behind it, all changed alike.
  Strings lines = m_lines;
  for (int line = 3; line <= m_placed; ++line) {
    json moved = Object(line);
    moved["place"][0] = moved["place"][0].get<int>() + 1;
    if (line == 3) moved["offset"][0] = moved["offset"][0].get<int>() + 1;
    lines[static_cast<std::size_t>(line - 1)] = jqhost::EncodeLine(moved);
    lines[static_cast<std::size_t>(line - 1)].pop_back();
  }
  WriteText(Log(), Joined(lines));
  ExpectRefused("recorded frame 3: its field");
}

// Files whose length and CRC are right, but that are no such frame.
TEST_F(JournalDamage, AFrameThatIsAnotherPictureIsRefused) {
  const auto put = [this](const std::string& bytes) {
    WriteText(FramePath(4), bytes);
    json object = Object(4);
    object["bytes"] = bytes.size();
    object["crc"] = jqhost::Crc32(bytes.data(), bytes.size());
    Replace(4, object);
  };
  put("P6\n30000 30000\n255\n");
  ExpectRefused("'" + FramePath(4) + "' has not the size that the log tells");
  put("P6\n200 160\n255\n");  // announces the right size, and ends there
  ExpectRefused("recorded frame 4: '" + FramePath(4) + "' cannot be used: ");
  put("no picture at all");
  ExpectRefused("'" + FramePath(4) + "' has not the size that the log tells");
}

TEST_F(JournalDamage, HeadersAreChecked) {
  const std::string path = m_folder + "/header.txt";
  const json header = jqhost::DecodeLine(Lines(path).at(0));
  const auto change = [&](const char* field, const json& value) {
    json changed = header;
    changed[field] = value;
    WriteText(path, jqhost::EncodeLine(changed));
  };
  change("format", 2);
  ExpectRefused("cannot read '" + path + "': it is of format 2, written by version");
  change("format", 0);
  ExpectRefused("its field \"format\"");
  change("kind", "cake");
  ExpectRefused("it is no header of a journal");
  change("detectLevel", 0);
  ExpectRefused("its field \"detectLevel\"");
  change("depth", 9);
  ExpectRefused("its field \"depth\"");
  change("source", 3);
  ExpectRefused("its field \"source\"");
  WriteText(path, jqhost::EncodeLine(header).substr(0, 20));
  ExpectRefused("it is cut short");
  WriteText(path, "");
  ExpectRefused("it is cut short");
  WriteText(path, "hello\n");
  ExpectRefused("it does not begin with a CRC");
  fs::remove(path);
  ExpectRefused("the folder holds none (no header.txt)");
}

TEST_F(JournalDamage, OneProcessAtATime) {
  const auto held = std::make_unique<RecordedRun>(m_folder, RecordedPart());
  ExpectRefused("the journal '" + m_folder + "' is in use by another process");
  EXPECT_THROW(jqhost::CheckJournal(m_folder, "", jqhost::StopToken(), [](int, int) {}),
               InputError);
}

TEST_F(JournalDamage, FoldersThatHoldNone) {
  const auto refusal = [](const std::string& folder) {
    try {
      RecordedRun run(folder, RecordedPart());
    } catch (const InputError& refused) {
      return std::string(refused.what());
    }
    return std::string();
  };
  EXPECT_NE(refusal(m_place / "nowhere").find("there is no such folder"), std::string::npos);
  EXPECT_NE(refusal(Log()).find("it is no folder"), std::string::npos);
  fs::create_directory(m_place / "empty");
  EXPECT_NE(refusal(m_place / "empty").find("holds none"), std::string::npos);
  // A run that was killed before its first frame.
  fs::remove(Log());
  EXPECT_NE(refusal(m_folder).find("holds no frame"), std::string::npos);

  const auto refusedNew = [](const std::string& folder) {
    try {
      jqhost::JournalFolder made(folder, jqhost::JournalHeader());
    } catch (const InputError& refused) {
      return std::string(refused.what());
    }
    return std::string();
  };
  EXPECT_NE(refusedNew(m_folder).find("holds a journal already"), std::string::npos);
  EXPECT_NE(refusedNew(m_place.Path()).find("holds other files"), std::string::npos);
  EXPECT_NE(refusedNew(m_folder + "/header.txt").find("it is no folder"), std::string::npos);
  EXPECT_EQ(refusedNew(m_place / "empty"), "");
}

}  // namespace
}  // namespace jqhost_test
