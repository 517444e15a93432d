// The interrupt handlers while a run goes on, and what they leave behind.
#include "console/interrupt.h"

#include <gtest/gtest.h>

#include <csignal>

namespace jqstitch_test {
namespace {

int g_seen = 0;

void Count(int) {
  ++g_seen;
}

TEST(InterruptGuard, RequestsAStopAndNamesIt) {
  const jqstitch::InterruptGuard guard({});
  EXPECT_FALSE(guard.Token().Requested());
  EXPECT_STREQ(guard.Reason(), "");
  std::raise(SIGTERM);
  EXPECT_TRUE(guard.Token().Requested());
  EXPECT_STREQ(guard.Reason(), "SIGTERM");
}

TEST(InterruptGuard, RestoresTheHandlersBeforeIt) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
    const auto before = std::signal(signal, Count);
    g_seen = 0;
    {
      const jqstitch::InterruptGuard guard({});
      std::raise(signal);
      EXPECT_EQ(g_seen, 0) << signal;
      EXPECT_EQ(guard.Token().Requested(), signal != SIGPIPE) << signal;
    }
    std::raise(signal);
    EXPECT_EQ(g_seen, 1) << signal;
    std::signal(signal, before);
  }
}

TEST(InterruptGuard, EachRunStartsWithoutARequest) {
  {
    const jqstitch::InterruptGuard guard({});
    std::raise(SIGINT);
  }
  const jqstitch::InterruptGuard next({});
  EXPECT_FALSE(next.Token().Requested());
}

}  // namespace
}  // namespace jqstitch_test
