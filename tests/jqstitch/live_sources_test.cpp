// Where a live run takes its frames from besides files and folders: lists, folders
// that grow, network streams.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <opencv2/imgproc.hpp>
#include <opencv2/videoio.hpp>
#include <thread>

#include "jqstitch/run_program.h"
#include "jqstitch/running_program.h"
#include "jqstitch/scene_frames.h"

namespace jqstitch_test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using Strings = std::vector<std::string>;

Strings NamesIn(const std::string& events) {
  Strings names;
  for (const json& frame : EventsOf(events, "frame")) {
    names.push_back(fs::path(std::string(frame["name"])).filename().string());
  }
  return names;
}

class LiveSources : public testing::Test {
 protected:
  Strings Arguments(const Strings& options) {
    Strings arguments = {"live", "-o", m_out / "mosaic.png", "--json"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return arguments;
  }

  // Appears in the followed folder in one step, as a careful writer does it.
  void Publish(const std::string& file) {
    fs::rename(file, m_grown / fs::path(file).filename().string());
  }

  TemporaryFolder m_in, m_out, m_grown;
};

TEST_F(LiveSources, AListNamesFramesAlsoOnStandardInput) {
  const Strings files = WriteWalk(m_in.Path(), 3, {64, 0});
  const Strings expected = {"f3.png", "f2.png", "f1.png"};
  StartOptions options;
  options.input = files[2] + "\n\n" + files[1] + "\r\n" + files[0];
  std::ofstream(m_in / "list.txt") << options.input;
  EXPECT_EQ(NamesIn(RunProgram(Arguments({"--list", m_in / "list.txt"})).out), expected);
  EXPECT_EQ(NamesIn(RunProgramWith(Arguments({"--list", "-"}), options).out), expected);
  EXPECT_EQ(NamesIn(RunProgramWith(Arguments({"-"}), options).out), expected);
  const Outcome missing = RunProgram(Arguments({"--list", m_in / "none.txt"}));
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_NE(missing.err.find("cannot read the list"), std::string::npos) << missing.err;
}

// A pipe stands for a program that writes names while the run goes on. Each frame is
// told although the list has not ended.
TEST_F(LiveSources, AListIsTakenAsItsLinesCome) {
  const Strings files = WriteWalk(m_in.Path(), 3, {64, 0});
  const std::string pipe = m_in / "names";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  RunningProgram program(Arguments({"--list", pipe}));
  std::ofstream names(pipe);
  names << files[0] << std::endl;
  ASSERT_TRUE(program.WaitForOutput("\"event\":\"frame\"", 1));
  names << files[1] << "\n" << (m_in / "none.png") << "\n" << (m_out / "mosaic.png") << std::endl;
  ASSERT_TRUE(program.WaitForOutput("\"event\":\"frame\"", 3));
  names << files[2];  // the last line may lack its end
  names.close();
  const Outcome outcome = program.Wait();
  EXPECT_EQ(NamesIn(outcome.out),
            (Strings{"f1.png", "f2.png", "none.png", "mosaic.png", "f3.png"}));
  const std::vector<json> frames = EventsOf(outcome.out, "frame");
  ASSERT_EQ(frames.size(), 5u);
  EXPECT_EQ(frames[2]["verdict"], "unreadable");
  EXPECT_EQ(frames[3]["verdict"], "unreadable");
  EXPECT_EQ(frames[4]["placed"], true);
}

TEST_F(LiveSources, AListThatIsStillSilentCanBeStopped) {
  const Strings files = WriteWalk(m_in.Path(), 2, {64, 0});
  const std::string pipe = m_in / "names";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  RunningProgram program(Arguments({"--list", pipe}));
  std::ofstream names(pipe);
  names << files[0] << "\n" << files[1] << std::endl;
  ASSERT_TRUE(program.WaitForOutput("\"event\":\"frame\"", 2));
  program.Signal(SIGINT);
  EXPECT_NE(program.Wait().err.find("Stopped by Ctrl-C"), std::string::npos);
  EXPECT_NEAR(ReadPictureFile(m_out / "mosaic.png").cols, 384, 2);
}

TEST_F(LiveSources, AnEmptyStreamedListIsRefused) {
  const Outcome outcome = RunProgram(Arguments({"-"}));
  EXPECT_EQ(outcome.exitCode, 1);
  EXPECT_NE(outcome.err.find("standard input names no files"), std::string::npos) << outcome.err;
}

// Grey of 16 bits a sample in the plainest video file there is. Its reader gives 8.
TEST_F(LiveSources, AVideoThatIsDeeperThanItsReaderIsTold) {
  const std::string video = m_in / "deep.y4m";
  std::ofstream stream(video, std::ios::binary);
  stream << "YUV4MPEG2 W320 H240 F25:1 Ip A1:1 Cmono16\n";
  for (const std::string& file : WriteWalk(m_in.Path(), 2, {96, 0})) {
    cv::Mat grey, deep;
    cv::cvtColor(ReadPictureFile(file), grey, cv::COLOR_BGR2GRAY);
    grey.convertTo(deep, CV_16U, 256);
    stream << "FRAME\n";
    stream.write(deep.ptr<char>(), static_cast<std::streamsize>(2 * deep.total()));
  }
  stream.close();
  const Outcome outcome = RunProgram(Arguments({video}));
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_NE(outcome.err.find("The video has 16 bits a sample, of which only the 8 highest"),
            std::string::npos)
      << outcome.err;
}

TEST_F(LiveSources, SomethingMustBeGiven) {
  EXPECT_EQ(RunProgram(Arguments({})).exitCode, 2);
  EXPECT_EQ(RunProgram(Arguments({"--follow", "1"})).exitCode, 2);
  EXPECT_EQ(RunProgram(Arguments({"a.png", "b.png", "--follow", "1"})).exitCode, 2);
  EXPECT_EQ(RunProgram(Arguments({m_in.Path(), "--follow", "0"})).exitCode, 2);
}

TEST_F(LiveSources, AFolderIsFollowedInNaturalOrder) {
  const Strings files = WriteWalk(m_in.Path(), 11, {32, 0});
  for (int i : {0, 1, 2}) Publish(files[i]);
  RunningProgram program(Arguments({m_grown.Path(), "--follow", "3"}));
  ASSERT_TRUE(program.WaitForOutput("\"event\":\"frame\"", 3));
  for (int i : {10, 9, 8, 7, 6, 5, 4, 3}) Publish(files[i]);
  const Outcome outcome = program.Wait();
  Strings expected;
  for (int i = 1; i <= 11; ++i) expected.push_back("f" + std::to_string(i) + ".png");
  // A look may fall among the eight; what it finds is in order, and all come.
  Strings names = NamesIn(outcome.out);
  EXPECT_EQ(Strings(names.begin(), names.begin() + 3),
            Strings(expected.begin(), expected.begin() + 3));
  std::sort(names.begin(), names.end());
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(names, expected) << outcome.err;
}

TEST_F(LiveSources, APictureIsTakenOnceItIsWrittenCompletely) {
  const Strings files = WriteWalk(m_in.Path(), 4, {64, 0});
  Publish(files[0]);
  RunningProgram program(Arguments({m_grown.Path(), "--follow", "4"}));
  ASSERT_TRUE(program.WaitForOutput("\"event\":\"frame\"", 1));
  // The second is written slowly, in halves; the third, complete, waits for it.
  const std::string bytes = ReadFile(files[1]);
  const std::string slow = m_grown / "f2.png";
  std::ofstream(slow, std::ios::binary) << bytes.substr(0, bytes.size() / 2);
  Publish(files[2]);
  std::this_thread::sleep_for(std::chrono::milliseconds(1500));
  std::ofstream(slow, std::ios::binary | std::ios::app) << bytes.substr(bytes.size() / 2);
  const Outcome outcome = program.Wait();
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_EQ(NamesIn(outcome.out), (Strings{"f1.png", "f2.png", "f3.png"}));
}

TEST_F(LiveSources, WhatNeverBecomesAPictureIsToldAtTheEnd) {
  const Strings files = WriteWalk(m_in.Path(), 2, {64, 0});
  Publish(files[0]);
  std::ofstream(m_grown / "e.png") << "no picture";  // before f1 in every order
  Publish(files[1]);
  const Outcome outcome = RunProgram(Arguments({m_grown.Path(), "--follow", "1"}));
  EXPECT_EQ(outcome.exitCode, 3);
  const std::vector<json> frames = EventsOf(outcome.out, "frame");
  ASSERT_EQ(frames.size(), 3u) << outcome.err;
  EXPECT_EQ(frames[0]["verdict"], "unreadable");
  EXPECT_EQ(frames[1]["placed"], true);
  EXPECT_EQ(frames[2]["placed"], true);
}

TEST_F(LiveSources, TheRunsOwnPictureIsNoFrameOfAFollowedFolder) {
  for (const std::string& file : WriteWalk(m_in.Path(), 3, {64, 0})) Publish(file);
  const Strings arguments = {"live",   m_grown.Path(), "-o", m_grown / "f2b.png",
                             "--json", "--follow",     "1",  "--save-every",
                             "0.1"};
  for (int run = 0; run < 2; ++run) {
    EXPECT_EQ(NamesIn(RunProgram(arguments).out), (Strings{"f1.png", "f2.png", "f3.png"}));
  }
}

TEST_F(LiveSources, CtrlCEndsFollowing) {
  for (const std::string& file : WriteWalk(m_in.Path(), 2, {64, 0})) Publish(file);
  RunningProgram program(Arguments({m_grown.Path(), "--follow", "600"}));
  ASSERT_TRUE(program.WaitForOutput("\"event\":\"frame\"", 2));
  program.Signal(SIGINT);
  const Outcome outcome = program.Wait();
  EXPECT_NE(outcome.err.find("Stopped by Ctrl-C"), std::string::npos) << outcome.err;
  EXPECT_NEAR(ReadPictureFile(m_out / "mosaic.png").cols, 384, 2);
}

TEST_F(LiveSources, WhatCannotBeFollowedIsRefused) {
  const Outcome missing = RunProgram(Arguments({m_in / "none", "--follow", "1"}));
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_NE(missing.err.find("it is not a folder"), std::string::npos) << missing.err;
  const Outcome empty = RunProgram(Arguments({m_grown.Path(), "--follow", "0.3"}));
  EXPECT_EQ(empty.exitCode, 1);
  EXPECT_NE(empty.err.find("the source gave no frames"), std::string::npos) << empty.err;
}

// Serves one file over HTTP to any number of clients, on a port of its own.
class FileServer {
 public:
  explicit FileServer(std::string body) : m_body(std::move(body)) {
    m_socket = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    EXPECT_EQ(bind(m_socket, reinterpret_cast<sockaddr*>(&address), size), 0);
    EXPECT_EQ(listen(m_socket, 8), 0);
    EXPECT_EQ(getsockname(m_socket, reinterpret_cast<sockaddr*>(&address), &size), 0);
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { Serve(); });
  }
  ~FileServer() {
    shutdown(m_socket, SHUT_RDWR);
    m_thread.join();
    close(m_socket);
  }
  int Port() const { return m_port; }

 private:
  void Serve() {
    for (;;) {
      const int client = accept(m_socket, nullptr, nullptr);
      if (client < 0) return;
      char request[4096];
      if (read(client, request, sizeof request) > 0) {
        const std::string answer = "HTTP/1.0 200 OK\r\nContent-Type: video/avi\r\n\r\n" + m_body;
        for (std::size_t sent = 0; sent < answer.size();) {
          const ssize_t more =
              send(client, answer.data() + sent, answer.size() - sent, MSG_NOSIGNAL);
          if (more <= 0) break;
          sent += static_cast<std::size_t>(more);
        }
      }
      close(client);
    }
  }

  std::string m_body;
  int m_socket = -1;
  int m_port = 0;
  std::thread m_thread;
};

TEST_F(LiveSources, ANetworkStreamIsTakenFrameByFrame) {
  const std::string video = m_in / "pass.avi";
  {
    cv::VideoWriter writer(video, cv::VideoWriter::fourcc('M', 'J', 'P', 'G'), 10, {320, 240});
    if (!writer.isOpened()) GTEST_SKIP() << "no video encoder";
    for (const std::string& file : WriteWalk(m_in.Path(), 5, {64, 0})) {
      writer.write(ReadPictureFile(file));
    }
  }
  const FileServer server(ReadFile(video));
  const std::string url = "http://127.0.0.1:" + std::to_string(server.Port()) + "/pass.avi";
  const Outcome outcome = RunProgram(Arguments({url}));
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
  EXPECT_EQ(EventsOf(outcome.out, "frame").size(), 5u);
}

TEST_F(LiveSources, AStreamThatDoesNotAnswerIsNamed) {
  // Port 1 of this machine: nobody listens there.
  for (const std::string url : {"http://127.0.0.1:1/x", "rtsp://127.0.0.1:1/x"}) {
    const Outcome outcome = RunProgram(Arguments({url}));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_NE(outcome.err.find("cannot open '" + url + "': the stream does not answer"),
              std::string::npos)
        << outcome.err;
  }
}

}  // namespace
}  // namespace jqstitch_test
