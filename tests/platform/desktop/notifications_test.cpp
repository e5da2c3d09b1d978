#include "platform/desktop/notifications.h"

#include <QDBusArgument>

#include "tests/platform/desktop/bus_fixture.h"

namespace platform::desktop {
namespace {

class NotificationsTest : public BusTest {
 protected:
  bool OfferService(const QStringList& capabilities) {
    service_.answer = [this, capabilities](const QDBusMessage& call) {
      if (call.member() == QLatin1String("GetCapabilities")) return call.createReply(QVariant(capabilities));
      return call.member() == QLatin1String("Notify") ? call.createReply(QVariant(++last_))
                                                      : call.createReply();
    };
    return Offer(service_, "org.freedesktop.Notifications", "/org/freedesktop/Notifications");
  }
  /// The arguments of the last notification.
  [[nodiscard]] QVariantList Shown() const { return service_.Last("Notify").arguments(); }
  bool WaitForCount(const char* member, int count) {
    return WaitFor([&] { return service_.Count(member) == count; });
  }

  FakeService service_;
  uint last_ = 10;
};

TEST_F(NotificationsTest, OneIsQuietPassingAndReplacesTheOneBefore) {
  ASSERT_TRUE(OfferService({}));
  BusNotifications notifications(Program());
  notifications.Show(u"Künstler - Lied", u"Radio A");
  ASSERT_TRUE(WaitForCount("Notify", 1));
  EXPECT_EQ(service_.Last("Notify").signature(), QStringLiteral("susssasa{sv}i"));
  EXPECT_EQ(Shown().value(1).toUInt(), 0U);
  EXPECT_EQ(Shown().value(3).toString(), QString::fromUtf8("Künstler - Lied"));
  EXPECT_EQ(Shown().value(4).toString(), QStringLiteral("Radio A"));
  const auto hints = qdbus_cast<QVariantMap>(Shown().value(6));
  EXPECT_EQ(hints.value(QStringLiteral("urgency")), QVariant::fromValue(uchar{0}));
  EXPECT_EQ(hints.value(QStringLiteral("transient")), QVariant(true));
  EXPECT_EQ(hints.value(QStringLiteral("suppress-sound")), QVariant(true));
  Settle();
  notifications.Show(u"Anderes", u"Radio A");
  ASSERT_TRUE(WaitForCount("Notify", 2));
  EXPECT_EQ(Shown().value(1).toUInt(), 11U);
  EXPECT_EQ(service_.Count("GetCapabilities"), 1);
}

TEST_F(NotificationsTest, LineIsPlainTextWhateverTheServiceMakesOfIt) {
  ASSERT_TRUE(OfferService({QStringLiteral("body"), QStringLiteral("body-markup")}));
  BusNotifications notifications(Program());
  notifications.Show(u"<b>Titel</b>", u"Rock & <i>Pop</i>");
  ASSERT_TRUE(WaitForCount("Notify", 1));
  EXPECT_EQ(Shown().value(3).toString(), QStringLiteral("<b>Titel</b>")) << "headings know no markup";
  EXPECT_EQ(Shown().value(4).toString(), QStringLiteral("Rock &amp; &lt;i&gt;Pop&lt;/i&gt;"));
}

TEST_F(NotificationsTest, ServiceWithoutMarkupGetsTheLineAsItStands) {
  ASSERT_TRUE(OfferService({QStringLiteral("body")}));
  BusNotifications notifications(Program());
  notifications.Show(u"Titel", u"Rock & Pop");
  ASSERT_TRUE(WaitForCount("Notify", 1));
  EXPECT_EQ(Shown().value(4).toString(), QStringLiteral("Rock & Pop"));
}

TEST_F(NotificationsTest, TextsHaveNoControlCharacterAndABoundedLength) {
  ASSERT_TRUE(OfferService({}));
  BusNotifications notifications(Program());
  notifications.Show(u"\x1B]0;x\aTitel\n", Text(100'000, u'x'));
  ASSERT_TRUE(WaitForCount("Notify", 1));
  EXPECT_EQ(Shown().value(3).toString(), QStringLiteral(" ]0;x Titel "));
  EXPECT_EQ(Shown().value(4).toString(), QString(4096, QLatin1Char('x')));
}

TEST_F(NotificationsTest, OfSeveralThatComeDuringAQuestionTheLastIsShown) {
  ASSERT_TRUE(OfferService({}));
  BusNotifications notifications(Program());
  notifications.Show(u"1", u"");
  notifications.Show(u"2", u"");
  ASSERT_TRUE(WaitForCount("Notify", 1));
  EXPECT_EQ(Shown().value(3).toString(), QStringLiteral("2"));
  service_.holds_back = true;
  Settle();
  notifications.Show(u"3", u"");
  ASSERT_TRUE(WaitForCount("Notify", 2));
  notifications.Show(u"4", u"");
  notifications.Show(u"5", u"");
  service_.holds_back = false;
  Service().send(service_.answer(service_.Last("Notify")));
  ASSERT_TRUE(WaitForCount("Notify", 3));
  EXPECT_EQ(Shown().value(3).toString(), QStringLiteral("5"));
  EXPECT_EQ(Shown().value(1).toUInt(), 12U);
}

TEST_F(NotificationsTest, WithdrawnOneIsClosedAlsoWhenItsNumberComesLater) {
  ASSERT_TRUE(OfferService({}));
  BusNotifications notifications(Program());
  notifications.Show(u"1", u"");
  ASSERT_TRUE(WaitForCount("Notify", 1));
  Settle();
  notifications.Withdraw();
  ASSERT_TRUE(WaitForCount("CloseNotification", 1));
  EXPECT_EQ(service_.Last("CloseNotification").arguments().value(0).toUInt(), 11U);
  service_.holds_back = true;
  notifications.Show(u"2", u"");
  ASSERT_TRUE(WaitForCount("Notify", 2));
  EXPECT_EQ(Shown().value(1).toUInt(), 0U) << "nothing stands there to be replaced";
  notifications.Withdraw();
  service_.holds_back = false;
  Service().send(service_.answer(service_.Last("Notify")));
  ASSERT_TRUE(WaitForCount("CloseNotification", 2));
  EXPECT_EQ(service_.Last("CloseNotification").arguments().value(0).toUInt(), 12U);
}

TEST_F(NotificationsTest, WithdrawnBeforeItWasSentItIsNeverShown) {
  ASSERT_TRUE(OfferService({}));
  BusNotifications notifications(Program());
  notifications.Show(u"1", u"");
  notifications.Withdraw();
  ASSERT_TRUE(WaitForCount("GetCapabilities", 1));
  Settle();
  EXPECT_EQ(service_.Count("Notify"), 0);
}

TEST_F(NotificationsTest, WithoutTheServiceOrABusNothingHappens) {
  ::testing::internal::CaptureStderr();
  BusNotifications nowhere(QDBusConnection(QStringLiteral("none")));
  nowhere.Show(u"1", u"");
  nowhere.Withdraw();
  BusNotifications notifications(Program());
  notifications.Show(u"1", u"");
  Settle();
  notifications.Withdraw();
  notifications.Show(u"2", u"");
  bus_.Stop();
  EXPECT_TRUE(WaitFor([this] { return !Program().isConnected(); }));
  notifications.Show(u"3", u"");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace platform::desktop
