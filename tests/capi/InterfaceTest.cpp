// SPDX-License-Identifier: MIT
// What the C interface promises beyond what the Python tests see through it.
#include "capi/vlgs.h"
#include "support/TestBed.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace vlgs::test {
namespace {

vlgs_object* newBed() {
    return reinterpret_cast<vlgs_object*>(make<TestBed>().detach());
}

TEST(CInterface, ReportsErrorsAndTouchesNoOutputThen) {
    vlgs_object* object = nullptr;
    EXPECT_EQ(vlgs_create("VlGeneralServices.Nothing", &object), VLGS_RAISED);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(vlgs_last_error()->number, 429);
    std::int32_t member = 77;
    EXPECT_EQ(vlgs_id_of(nullptr, "x", &member), VLGS_RAISED);
    EXPECT_EQ(vlgs_last_error()->number, 91);
    EXPECT_EQ(member, 77);
    EXPECT_EQ(vlgs_create(nullptr, &object), VLGS_RAISED);
    vlgs_release(nullptr);
}

TEST(CInterface, KeepsTextsWhole) {
    for (const std::string& text : {std::string(), std::string("a\0b", 3), std::string("\xED\xA0\x80"),
                                    std::string("\xF0\x9F\x98\x80"), std::string(5000, 'x')}) {
        vlgs_value value;
        ASSERT_EQ(vlgs_text_new(text.data(), text.size(), &value), VLGS_DONE);
        char buffer[5000];
        std::size_t length = 0;
        ASSERT_EQ(vlgs_text(&value, buffer, sizeof buffer, &length), VLGS_DONE);
        EXPECT_EQ(std::string(buffer, length), text);
        buffer[0] = '#';
        ASSERT_EQ(vlgs_text(&value, buffer, length ? length - 1 : 0, &length), VLGS_DONE);
        EXPECT_EQ(buffer[0], '#') << "a text that does not fit is not copied";
        EXPECT_EQ(length, text.size());
        vlgs_clear(&value, 1);
        EXPECT_EQ(value.type, VLGS_EMPTY);
    }
}

TEST(CInterface, RefusesRangesOutsideAnArrayAndValuesThatAreNone) {
    const vlgs_dimension dimensions[] = {{1, 2}, {0, 3}};
    vlgs_value array, elements[6] = {};
    ASSERT_EQ(vlgs_array_new(VLGS_LONG, dimensions, 2, &array), VLGS_DONE);
    EXPECT_EQ(vlgs_array_read(&array, 0, 6, elements), VLGS_DONE);
    for (const auto& [offset, count] :
         {std::pair<std::size_t, std::size_t>{0, 7}, {6, 1}, {7, 0}, {1, SIZE_MAX}}) {
        EXPECT_EQ(vlgs_array_read(&array, offset, count, elements), VLGS_RAISED);
        EXPECT_EQ(vlgs_last_error()->number, 9);
    }
    vlgs_value number{};
    std::size_t length = 0;
    const std::uint8_t* bytes = nullptr;
    const vlgs_dimension* shape = nullptr;
    const char* name = nullptr;
    EXPECT_EQ(vlgs_text(&number, nullptr, 0, &length), VLGS_RAISED);
    EXPECT_EQ(vlgs_array_shape(&number, &shape, &length), VLGS_RAISED);
    EXPECT_EQ(vlgs_bytes(&array, &bytes, &length), VLGS_RAISED);
    EXPECT_EQ(vlgs_record(&number, &name, &length), VLGS_RAISED);
    EXPECT_EQ(vlgs_last_error()->number, 13);
    EXPECT_EQ(vlgs_array_new(VLGS_LONG, dimensions, 61, elements), VLGS_RAISED);
    EXPECT_EQ(vlgs_last_error()->number, 9);
    vlgs_clear(&array, 1);
}

TEST(CInterface, AnswersCallsOnAnotherThreadWithAnError) {
    vlgs_object* bed = newBed();
    std::thread([&] {
        vlgs_object* own = newBed();
        vlgs_value argument{}, result{};
        argument.type = VLGS_OBJECT;
        argument.as.object = bed;
        std::int32_t member = 0;
        vlgs_object* enumerator = nullptr;
        for (const int status : {vlgs_id_of(bed, "Echo", &member), vlgs_enumerate(bed, &enumerator),
                                 vlgs_invoke(bed, 9, VLGS_GET, nullptr, 0, nullptr, 0, &result),
                                 vlgs_invoke(own, 1, VLGS_METHOD, &argument, 1, nullptr, 0, &result)}) {
            EXPECT_EQ(status, VLGS_RAISED);
            EXPECT_EQ(vlgs_last_error()->number, -2147417842);
        }
        vlgs_release(own);
    }).join();
    vlgs_release(bed);
}

struct Client {
    bool released = false;
    std::int32_t calls = 0;
};

const vlgs_client clientFunctions = {
    .id_of =
        [](void*, const char* name, std::int32_t* member) {
            *member = std::string(name) == "Count" ? 5 : VLGS_UNKNOWN_MEMBER;
            return int{VLGS_DONE};
        },
    .invoke =
        [](void* context, std::int32_t member, std::uint32_t, vlgs_value*, std::size_t, vlgs_value* result) {
            static_cast<Client*>(context)->calls += 1;
            if (member != 5) {
                vlgs_set_error(1234, "client", 6, "no\0pe", 5);
                return int{VLGS_RAISED};
            }
            result->type = VLGS_LONG;
            result->as.number = 42;
            return int{VLGS_DONE};
        },
    .release = [](void* context) { static_cast<Client*>(context)->released = true; }};

TEST(CInterface, CallsObjectsOfTheClientsOwn) {
    Client client;
    vlgs_object* object = nullptr;
    ASSERT_EQ(vlgs_object_new(&clientFunctions, &client, &object), VLGS_DONE);
    {
        const Ref<Object> inside(reinterpret_cast<Object*>(object));
        EXPECT_EQ(call(inside, u"Count"), Variant(42));
        EXPECT_EQ(inside->idOf(u"Other"), unknownMember);
    }
    EXPECT_EQ(vlgs_class_of(object), nullptr);
    EXPECT_EQ(vlgs_invoke(object, 6, VLGS_METHOD, nullptr, 0, nullptr, 0, nullptr), VLGS_RAISED);
    const vlgs_error error = *vlgs_last_error();
    EXPECT_EQ(error.number, 1234);
    EXPECT_EQ(std::string(error.description, error.description_length), std::string("no\0pe", 5));
    EXPECT_FALSE(client.released);
    vlgs_release(object);
    EXPECT_TRUE(client.released);
    EXPECT_EQ(client.calls, 2);
}

} // namespace
} // namespace vlgs::test
