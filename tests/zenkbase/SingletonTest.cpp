// SPDX-License-Identifier: Zlib
#include <zenkbase/singleton.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

struct Service {
    virtual ~Service() { ++destroyed; }
    static inline int destroyed = 0;
};

struct Other {
    virtual ~Other() = default;
};

TEST(Singleton, MissingInstanceIsNotAStandardExceptionAndHasItsFixedText) {
    Zenk::Singleton<Service> view;
    EXPECT_FALSE(view.Exists());
    try {
        view.Instance();
        FAIL() << "an absent instance was found";
    } catch (const std::exception&) {
        FAIL() << "a catch of std::exception must not see it";
    } catch (const Zenk::MissingInstance& missing) {
        EXPECT_EQ(missing.message, "ERROR: zenkbase\\singleton:__LINE__ No instance!");
    }
}

TEST(Singleton, RegisteredInstancesAreFoundByTypeUntilTakenOut) {
    Service service;
    Other other;
    Zenk::RegisterInstance<Service>(service);
    Zenk::RegisterInstance<Other>(other);
    EXPECT_EQ(Zenk::Singleton<Service>().Instance(), &service);
    EXPECT_EQ(Zenk::Singleton<Other>().Instance(), &other);
    EXPECT_THROW(Zenk::RegisterInstance<Service>(service), std::logic_error);

    EXPECT_EQ(Zenk::UnregisterInstance<Service>(), &service);
    EXPECT_EQ(Zenk::UnregisterInstance<Service>(), nullptr);
    EXPECT_FALSE(Zenk::Singleton<Service>().Exists());
    EXPECT_TRUE(Zenk::Singleton<Other>().Exists());
    Zenk::UnregisterInstance<Other>();
}

TEST(Singleton, OnlyAnOwningViewDeletesTheInstance) {
    Service::destroyed = 0;
    auto* owned = new Service;
    Zenk::RegisterInstance<Service>(*owned);
    { Zenk::Singleton<Service> borrowed(1); }
    EXPECT_EQ(Service::destroyed, 0);
    EXPECT_TRUE(Zenk::Singleton<Service>().Exists());
    { Zenk::Singleton<Service> owning(0); }
    EXPECT_EQ(Service::destroyed, 1);
    EXPECT_FALSE(Zenk::Singleton<Service>().Exists());
    { Zenk::Singleton<Service> owningNothing(0); } // nothing registered: nothing happens
    EXPECT_EQ(Service::destroyed, 1);
}

TEST(Singleton, TheKeyIsTheSingletonClassNotTheInterface) {
    EXPECT_EQ(Zenk::Singleton<Service>::Key(),
              (typeid(Zenk::Singleton<Service, std::shared_ptr>).hash_code()));
    EXPECT_NE(Zenk::Singleton<Service>::Key(), typeid(Service).hash_code());
}

} // namespace
