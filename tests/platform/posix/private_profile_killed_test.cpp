// What a save that is killed in the middle leaves behind, and what becomes of it.

#include <signal.h>
#include <sys/wait.h>
#include <time.h>

#include <cstddef>
#include <filesystem>
#include <random>

#include "tests/platform/posix/ini_fixture.h"

namespace platform::posix {
namespace {

constexpr int kStations = 300;
constexpr int kKills = 60;

class KilledSave : public IniFixture {
 protected:
  /// Writes the catalogue again and again, its number of the round in every station, until it is killed.
  [[noreturn]] static void SaveForever(const Text& path) {
    PosixNativePaths native_paths;
    icu::IcuTextConversion text_conversion;
    PosixProfileFiles native_disk;
    IniPrivateProfile saving(native_paths, native_disk, text_conversion);
    for (char16_t round = u'0';; round = round == u'9' ? u'0' : static_cast<char16_t>(round + 1)) {
      WriteGroup group(saving);
      for (char16_t station = 0; station < kStations; ++station) {
        const Text name{u'S', static_cast<char16_t>(u'0' + station / 100),
                        static_cast<char16_t>(u'0' + station / 10 % 10),
                        static_cast<char16_t>(u'0' + station % 10)};
        saving.WritePrivateProfileStringW(name, u"Link", Text(200, round), path);
      }
      group.End();
    }
  }
  static std::string Catalogue(char round) {
    std::string bytes;
    for (int station = 0; station < kStations; ++station) {
      const std::string digits = std::to_string(1000 + station).substr(1);
      bytes += "[S" + digits + "]\r\nLink=" + std::string(200, round) + "\r\n";
    }
    return bytes;
  }
  [[nodiscard]] bool ContainsOneWholeCatalogue() const {
    const std::string bytes = Bytes();
    const std::size_t first = bytes.find("Link=");
    return first != std::string::npos && bytes == Catalogue(bytes[first + 5]);
  }
  [[nodiscard]] std::ptrdiff_t Entries() const {
    return std::distance(std::filesystem::directory_iterator(folder.Path()), {});
  }
  /// Lets another program save for some milliseconds at most and ends it there.
  void KillASave(long nanoseconds) {
    const pid_t saving = ::fork();
    ASSERT_GE(saving, 0);
    if (saving == 0) SaveForever(Path());
    const timespec moment{0, nanoseconds};
    ::nanosleep(&moment, nullptr);
    ASSERT_EQ(::kill(saving, SIGKILL), 0);
    ASSERT_EQ(::waitpid(saving, nullptr, 0), saving);
  }
};

TEST_F(KilledSave, TheFileIsWholeAtEveryMomentAndTheNextSaveTidiesUp) {
  Given(Catalogue('0'));
  std::mt19937 random(std::random_device{}());
  std::uniform_int_distribution<long> moments(0, 30'000'000);
  int leftovers = 0;
  for (int kill = 0; kill < kKills; ++kill) {
    KillASave(moments(random));
    EXPECT_TRUE(ContainsOneWholeCatalogue());
    leftovers += Entries() > 1 ? 1 : 0;
    EXPECT_LE(Entries(), 2) << "each save removes what the one before it left";
  }
  RecordProperty("leftovers", leftovers);
  EXPECT_TRUE(Write(u"S000", u"Link", u"after"));
  EXPECT_EQ(Entries(), 1);
  EXPECT_EQ(Read(u"S000", u"Link"), u"after");
  EXPECT_EQ(Read(u"S001", u"Link").size(), 200U);
}

}  // namespace
}  // namespace platform::posix
