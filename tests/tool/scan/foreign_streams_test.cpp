// Streams that other programs make, beside what another program says of them: ffmpeg and GStreamer, and ffprobe. Left
// out where they are not installed.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "tool/scan/scan_host.h"

namespace {

using tool_test::json;
using tool_test::program_result;
using tool_test::run_program;

class ForeignStreams : public scan_test::scan_host {
 protected:
  static bool is_installed(const std::string &program) { return std::filesystem::exists("/usr/bin/" + program); }

  void make_by_ffmpeg(const std::vector<std::string> &more) const {
    std::vector<std::string> command = {"/usr/bin/ffmpeg",
                                        "-v",
                                        "error",
                                        "-f",
                                        "lavfi",
                                        "-i",
                                        "testsrc=size=160x120",
                                        "-f",
                                        "lavfi",
                                        "-i",
                                        "sine=440",
                                        "-f",
                                        "lavfi",
                                        "-i",
                                        "sine=880",
                                        "-t",
                                        "1"};
    for (const char *word : {"-map",
                             "0:v",
                             "-map",
                             "1:a",
                             "-map",
                             "2:a",
                             "-map",
                             "1:a",
                             "-c:v",
                             "mpeg2video",
                             "-c:a",
                             "mp2",
                             "-c:a:2",
                             "ac3",
                             "-metadata:s:a:0",
                             "language=deu",
                             "-metadata:s:a:1",
                             "language=fra",
                             "-program",
                             "title=One:program_num=101:st=0:st=1:st=3",
                             "-program",
                             "title=Two:program_num=102:st=2",
                             "-metadata",
                             "service_provider=Us"}) {
      command.emplace_back(word);
    }
    command.insert(command.end(), more.begin(), more.end());
    command.insert(command.end(), {"-f", "mpegts", path("a.ts")});
    const program_result made = run_program(command);
    ASSERT_EQ(made.exit_code, 0) << made.err;
  }

  [[nodiscard]] json programs_by_ffprobe() const {
    const program_result probed =
        run_program({"/usr/bin/ffprobe", "-v", "error", "-show_programs", "-of", "json", path("a.ts")});
    return json::parse(probed.out)["programs"];
  }

  // The PIDs of a program's streams of one type, "video" or "audio".
  static std::set<int> pids_in(const json &program, const std::string &type) {
    std::set<int> pids;
    for (const json &stream : program["streams"].elements()) {
      if (stream["codec_type"].as_string() == type) {
        pids.insert(std::stoi(stream["id"].as_string(), nullptr, 16));
      }
    }
    return pids;
  }

  // Every program of the stream is a service of the list, with the same PIDs, and there is no other one.
  void expect_the_same(const json &programs) const {
    ASSERT_EQ(programs.size(), static_cast<std::size_t>(get_channel_list()->vnumber));
    for (const json &program : programs.elements()) {
      const auto id = static_cast<std::uint16_t>(program["program_num"].as_integer());
      const channel_st *service = get_channel(get_vch_index_by_service_id(id));
      ASSERT_NE(service, nullptr) << id;
      EXPECT_EQ(service->pmt_pid, program["pmt_pid"].as_integer());
      EXPECT_EQ(service->pcr_pid, program["pcr_pid"].as_integer());
      const std::set<int> videos = pids_in(program, "video");
      EXPECT_EQ(service->video_pid, videos.empty() ? 0xFFFF : *videos.begin());
      const std::set<int> sounds = pids_in(program, "audio");
      EXPECT_EQ(service->audio_pid, sounds.empty() ? 0xFFFF : *sounds.begin());
      EXPECT_EQ(pids_beside(*service), pids_of_all(program));
      if (const json *tags = program.find("tags"); tags != nullptr) {
        EXPECT_EQ(service->name[0].text, (*tags)["service_name"].as_string());
      }
    }
  }

 private:
  static std::set<int> pids_of_all(const json &program) {
    std::set<int> pids = pids_in(program, "video");
    pids.merge(pids_in(program, "audio"));
    return pids;
  }

  [[nodiscard]] std::set<int> pids_beside(const channel_st &service) const {
    const json document = json::parse(tool_test::read_file(path("list.dat.more.json")));
    const std::string end = ':' + std::to_string(service.service_id);
    std::set<int> pids;
    for (const json &each : document["services"].elements()) {
      if (each["id"].as_string().ends_with(end)) {
        for (const json &stream : each["streams"].elements()) {
          pids.insert(static_cast<int>(stream["pid"].as_integer()));
        }
      }
    }
    return pids;
  }
};

TEST_F(ForeignStreams, OfFfmpegAreReadAsFfprobeReadsThem) {
  if (!is_installed("ffmpeg") || !is_installed("ffprobe")) {
    GTEST_SKIP() << "ffmpeg is not installed";
  }
  for (const std::vector<std::string> &more : std::vector<std::vector<std::string>>{
           {"-mpegts_original_network_id", "1", "-mpegts_transport_stream_id", "1019"},
           {"-mpegts_flags", "nit"},
           {"-mpegts_flags", "system_b", "-mpegts_pmt_start_pid", "0x30", "-mpegts_start_pid", "0x80"},
           {"-mpegts_flags", "initial_discontinuity+pat_pmt_at_frames", "-tables_version", "7"}}) {
    make_by_ffmpeg(more);
    const program_result result = scan({"--tuned", "11493.75H", "--source", "S19.2E"});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    load();
    expect_the_same(programs_by_ffprobe());
    std::filesystem::remove(path("a.ts"));
  }
}

TEST_F(ForeignStreams, OfDiscsHavePacketsWithTimes) {
  if (!is_installed("ffmpeg") || !is_installed("ffprobe")) {
    GTEST_SKIP() << "ffmpeg is not installed";
  }
  const program_result made = run_program({"/usr/bin/ffmpeg", "-v", "error", "-f", "lavfi", "-i", "sine=440", "-t", "1",
                                           "-c:a", "ac3", "-mpegts_m2ts_mode", "1", "-f", "mpegts", path("a.ts")});
  ASSERT_EQ(made.exit_code, 0) << made.err;

  const program_result result = scan({"--tuned", "346", "--source", "C"});

  EXPECT_LE(result.exit_code, 1) << result.err;
  load();
  expect_the_same(programs_by_ffprobe());
}

TEST_F(ForeignStreams, OfGStreamerAreReadAsFfprobeReadsThem) {
  if (!is_installed("gst-launch-1.0") || !is_installed("ffmpeg") || !is_installed("ffprobe")) {
    GTEST_SKIP() << "GStreamer is not installed";
  }
  run_program(
      {"/usr/bin/ffmpeg", "-v", "error", "-f", "lavfi", "-i", "testsrc=size=160x120", "-t", "1", path("v.m2v")});
  run_program({"/usr/bin/ffmpeg", "-v", "error", "-f", "lavfi", "-i", "sine=440", "-t", "1", path("s.mp2")});
  const program_result made = run_program(
      {"/bin/sh", "-c",
       "gst-launch-1.0 -q mpegtsmux name=mux prog-map=program_map,sink_100=7,sink_101=7,sink_102=9 ! "
       "filesink location=a.ts filesrc location=v.m2v ! mpegvideoparse ! mux.sink_100 "
       "filesrc location=s.mp2 ! mpegaudioparse ! mux.sink_101 filesrc location=s.mp2 ! mpegaudioparse ! mux.sink_102"},
      dir.path());
  if (made.exit_code != 0) {
    GTEST_SKIP() << made.err;
  }

  const program_result result = scan({"--tuned", "346", "--source", "C"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: scan: a.ts: the table of services (SDT) did not come\n"
                        "chlist: scan: a.ts: no table tells the original network id: it is 0\n"
                        "chlist: scan: list.dat: left out: names, which the tables do not tell: 2\n");
  load();
  expect_the_same(programs_by_ffprobe());
}

}  // namespace
