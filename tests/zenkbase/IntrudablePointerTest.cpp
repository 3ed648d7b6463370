// SPDX-License-Identifier: Zlib
#include <zenkbase/intrudable_pointer.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

struct IFirst : Zenk::Intrudable {
    virtual int First() = 0;
};
struct ISecond : Zenk::Intrudable {
    virtual int Second() = 0;
};

// One object, two interfaces, one count: the virtual base makes that so.
class Both final : public IFirst, public ISecond {
public:
    explicit Both(std::vector<int>& notices, bool& destroyed)
        : notices(notices)
        , destroyed(destroyed) {}
    ~Both() override { destroyed = true; }
    int First() override { return 1; }
    int Second() override { return 2; }

private:
    void ReleaseNotice(std::int32_t remaining) override { notices.push_back(remaining); }
    std::vector<int>& notices;
    bool& destroyed;
};

TEST(IntrudablePointer, HandlesOfTwoInterfacesShareOneCount) {
    std::vector<int> notices;
    bool destroyed = false;
    auto* object = new Both(notices, destroyed);
    Zenk::IntrudablePointer<IFirst> first(object);
    Zenk::IntrudablePointer<ISecond> second(object);
    Zenk::IntrudablePointer<IFirst> copy = first;
    first.Reset();
    second.Reset();
    EXPECT_FALSE(destroyed);
    EXPECT_EQ(copy->First(), 1);
    copy.Reset();
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(notices, (std::vector<int>{2, 1, 0}));
}

TEST(IntrudablePointer, MovingEmptiesTheSourceAndTakesNoCount) {
    std::vector<int> notices;
    bool destroyed = false;
    Zenk::IntrudablePointer<Both> source(new Both(notices, destroyed));
    Zenk::IntrudablePointer<IFirst> target(std::move(source));
    EXPECT_FALSE(source); // NOLINT(bugprone-use-after-move): the moved-from state is the subject
    source.Reset();       // releasing an empty handle does nothing
    EXPECT_TRUE(notices.empty());
    target = Zenk::IntrudablePointer<IFirst>();
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(notices, std::vector<int>{0});
}

TEST(IntrudablePointer, SelfAssignmentKeepsTheObject) {
    std::vector<int> notices;
    bool destroyed = false;
    Zenk::IntrudablePointer<IFirst> handle(new Both(notices, destroyed));
    auto& alias = handle;
    handle = alias;
    EXPECT_FALSE(destroyed);
    EXPECT_EQ(handle->First(), 1);
}

} // namespace
