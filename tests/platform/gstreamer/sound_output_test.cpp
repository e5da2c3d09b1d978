#include "platform/gstreamer/sound_output.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/support/pulse_server.h"
#include "tests/support/temp_folder.h"

namespace gstreamer_test {
namespace {

using platform::gstreamer::GstMediaOptions;
using platform::gstreamer::OutputChooser;
using platform::gstreamer::SoundOutput;
using test_support::PulseServer;
using test_support::TempFolder;
using Wish = OutputChooser::Wish;

class SoundOutputTest : public testing::Test {
 protected:
  SoundOutputTest() {
    gst_init(nullptr, nullptr);
    UseCard("pcm.!default { type null }");
    UseServer("nobody-listens-here");
  }
  void UseCard(const std::string& configuration) {
    folder.Write("alsa.conf", configuration);
    setenv("ALSA_CONFIG_PATH", (folder.Path() / "alsa.conf").c_str(), 1);
  }
  void UseServer(const std::string& name) {
    setenv("PULSE_SERVER", ("unix:" + (folder.Path() / name).string()).c_str(), 1);
  }
  GstMediaOptions Options(SoundOutput output = SoundOutput::kAutomatic) {
    GstMediaOptions options;
    options.output = output;
    options.log = [this](const std::string& line) { log.push_back(line); };
    return options;
  }
  /// The kind of sink; empty when there is none.
  static std::string Kind(OutputChooser& chooser, Wish wish) {
    const OutputChooser::Output output = chooser.Choose(wish);
    if (!output.sink) return {};
    std::string kind = GST_OBJECT_NAME(gst_element_get_factory(output.sink.get()));
    EXPECT_EQ(output.heard, kind != "fakesink");
    gst_element_set_state(output.sink.get(), GST_STATE_NULL);
    return kind;
  }

  TempFolder folder;
  std::vector<std::string> log;
};

TEST_F(SoundOutputTest, TheSoundServerComesFirstAndIsWaitedForWhenItGoes) {
  PulseServer pulse;
  pulse.UseInThisProcess();
  OutputChooser chooser(Options());
  EXPECT_EQ(Kind(chooser, Wish::kDevice), "pulsesink");
  pulse.Stop();
  EXPECT_EQ(Kind(chooser, Wish::kDevice), "") << "it would miss the card when it comes back";
  EXPECT_EQ(Kind(chooser, Wish::kDeviceOrNowhere), "fakesink");
  pulse.Start();
  EXPECT_EQ(Kind(chooser, Wish::kDeviceOrNowhere), "pulsesink");
}

TEST_F(SoundOutputTest, TheCardComesNext) {
  OutputChooser chooser(Options());
  EXPECT_EQ(Kind(chooser, Wish::kDevice), "alsasink");
  EXPECT_EQ(Kind(chooser, Wish::kDeviceOrNowhere), "alsasink");
  EXPECT_TRUE(log.empty());
}

TEST_F(SoundOutputTest, WithoutAnyDeviceTheSoundGoesNowhereAndThatIsSaidOnce) {
  UseCard("");
  OutputChooser chooser(Options());
  EXPECT_EQ(Kind(chooser, Wish::kDevice), "");
  EXPECT_TRUE(log.empty()) << "nothing was chosen";
  EXPECT_EQ(Kind(chooser, Wish::kDeviceOrNowhere), "fakesink");
  EXPECT_EQ(Kind(chooser, Wish::kNowhere), "fakesink");
  EXPECT_EQ(log, std::vector<std::string>{"no device takes the sound: waiting for one"});
}

TEST_F(SoundOutputTest, SoundThatIsMeantToGoNowhereIsGivenNoDevice) {
  OutputChooser chooser(Options(SoundOutput::kNowhere));
  EXPECT_EQ(Kind(chooser, Wish::kDevice), "fakesink");
  EXPECT_FALSE(chooser.WantsDevice());
  EXPECT_TRUE(log.empty());
}

}  // namespace
}  // namespace gstreamer_test
