#include <memory>

#include <gtest/gtest.h>

#include "foundation/msg_svc/eventmgr/EventMgr.hpp"
#include "foundation/msg_svc/eventmgr/SubscriptionCountByType.hpp"
#include "host/foundation/msg_svc/eventmgr/Events.hpp"
#include "vvm/Factory.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using namespace foundation::msg_svc::eventmgr;
using vvm::Factory;
using vvm::VVM;

// The process has no virtual machine before and after each test.
class FactoryTest : public testing::Test {
  protected:
    FactoryTest() { Factory::setCurrentLocalVVM(nullptr); }
    ~FactoryTest() override { Factory::setCurrentLocalVVM(nullptr); }
};

TEST_F(FactoryTest, AProcessHasNoMachineUntilTheHostMakesOne) {
    EXPECT_EQ(Factory::getCurrentLocalVVM(vvm::ReturnNothing), nullptr);
    EXPECT_THROW(static_cast<void>(Factory::getCurrentLocalVVM(vvm::Throw)),
                 vvm::NoCurrentVVMError);
    const auto made = Factory::makeLocalVVM();
    EXPECT_EQ(Factory::getCurrentLocalVVM(vvm::ReturnNothing), made);
    EXPECT_EQ(Factory::getCurrentLocalVVM(vvm::Throw), made);
}

TEST_F(FactoryTest, AnotherMachineTakesThePlaceOfTheFirst) {
    const auto first = Factory::makeLocalVVM();
    const auto second = Factory::makeLocalVVM();
    EXPECT_NE(first, second);
    EXPECT_EQ(Factory::getCurrentLocalVVM(vvm::Throw), second);
    Factory::setCurrentLocalVVM(first);
    EXPECT_EQ(Factory::getCurrentLocalVVM(vvm::Throw), first);
    Factory::setCurrentLocalVVM(nullptr);
    EXPECT_EQ(Factory::getCurrentLocalVVM(vvm::ReturnNothing), nullptr);
}

TEST_F(FactoryTest, EachMachineHasOneEventManagerWhichMayOutliveIt) {
    auto machine = std::make_shared<VVM>();
    const auto manager = machine->getEventMgr();
    ASSERT_TRUE(manager);
    EXPECT_EQ(machine->getEventMgr(), manager);
    EXPECT_NE(VVM().getEventMgr(), manager);
    machine.reset();
    int heard = 0;
    const auto connection = manager->subscribe<OtherEvent>([&](const OtherEvent&) { ++heard; });
    manager->publish(std::make_shared<OtherEvent>(), true);
    EXPECT_EQ(heard, 1);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
