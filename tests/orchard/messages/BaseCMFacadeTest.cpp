#include "CM/host/IBaseCMFacade.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

TEST(BaseCMFacade, BeginsAndEndsInTheHostForWhatTheLibraryDerivesFromIt) {
    class Services : public IBaseCMFacade {
      public:
        explicit Services(bool &alive) : alive_(alive) { alive_ = true; }
        ~Services() override { alive_ = false; }
        CString getTheDefaultHeader() override { return "header"; }
        void RefreshCMStatus() override {}

      private:
        bool &alive_;
    };
    bool alive = false;
    std::unique_ptr<IBaseCMFacade> services = std::make_unique<Services>(alive);
    EXPECT_EQ(services->getTheDefaultHeader(), "header");
    EXPECT_TRUE(alive);
    services.reset();
    EXPECT_FALSE(alive);
}

} // namespace
