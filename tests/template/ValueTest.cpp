#include <gtest/gtest.h>

#include <limits>

#include "TemplateTestSupport.h"
#include "template/Resolvable.h"

namespace tintwork::stencil {
namespace {

TEST(Value, KindsAndTypedAccess) {
    EXPECT_EQ(Value().kind(), Value::Kind::null);
    EXPECT_EQ(Value(nullptr).kind(), Value::Kind::null);
    EXPECT_EQ(Value(true).kind(), Value::Kind::boolean);
    EXPECT_EQ(Value(7).kind(), Value::Kind::integer);
    EXPECT_EQ(Value(std::size_t{7}).kind(), Value::Kind::integer);
    EXPECT_EQ(Value(7.0).kind(), Value::Kind::number);
    EXPECT_EQ(Value("x").kind(), Value::Kind::string);
    EXPECT_EQ(Value(std::string_view("x")).kind(), Value::Kind::string);
    EXPECT_EQ(Value(List{}).kind(), Value::Kind::list);
    EXPECT_EQ(Value(Map{}).kind(), Value::Kind::map);
    EXPECT_EQ(Value("x").asBool(), nullptr);
    EXPECT_EQ(*Value(3).toDouble(), 3.0);
    EXPECT_FALSE(Value("3").toDouble().has_value());
}

TEST(Value, EqualityComparesNumbersAcrossKindsAndOtherKindsStrictly) {
    EXPECT_EQ(Value(1), Value(1.0));
    EXPECT_NE(Value(1), Value("1"));
    EXPECT_NE(Value(true), Value(1));
    EXPECT_EQ(Value(), Value());
    EXPECT_EQ(Value(List{1, "a"}), Value(List{1.0, "a"}));
    EXPECT_EQ(Value(Map{{"k", 1}}), Value(Map{{"k", 1}}));
    auto record = std::make_shared<FieldsRecord>("R", std::vector<std::pair<std::string, Value>>{});
    EXPECT_EQ(Value(record), Value(record));
    EXPECT_NE(Value(record), Value(std::make_shared<FieldsRecord>("R", std::vector<std::pair<std::string, Value>>{})));
}

TEST(Value, PrintedForms) {
    EXPECT_EQ(Value(-0.0).description(), "-0.0");
    EXPECT_EQ(Value(0.1 + 0.2).description(), "0.30000000000000004");
    // Positional digits between 1e-4 and 2^53, the exponent form outside.
    EXPECT_EQ(Value(1e6).description(), "1000000.0");
    EXPECT_EQ(Value(123456789.25).description(), "123456789.25");
    EXPECT_EQ(Value(0.0001).description(), "0.0001");
    EXPECT_EQ(Value(0.00001).description(), "1e-05");
    EXPECT_EQ(Value(-1e16).description(), "-1e+16");
    EXPECT_EQ(Value(std::numeric_limits<double>::infinity()).description(), "inf");
    EXPECT_EQ(Value(std::numeric_limits<std::int64_t>::min()).description(), "-9223372036854775808");
    EXPECT_EQ(Value(List{List{}, Map{}, "q\"uote"}).description(), "[[], [:], \"q\\\"uote\"]");
    auto record = std::make_shared<FieldsRecord>(
        "TemplateRGBAColor", std::vector<std::pair<std::string, Value>>{{"red", 1.0}, {"name", Value()}});
    EXPECT_EQ(Value(record).description(), "TemplateRGBAColor(red: 1.0, name: nil)");
    EXPECT_EQ(record->field("red"), std::optional<Value>(Value(1.0)));
    EXPECT_FALSE(record->field("blue").has_value());
}

TEST(Value, LookupKeyOnEachKind) {
    Value list(List{"a", "b"});
    EXPECT_EQ(lookupKey(list, "1"), Value("b"));
    EXPECT_EQ(lookupKey(list, "-2"), Value("a"));
    EXPECT_EQ(lookupKey(list, "-3"), Value());
    EXPECT_EQ(lookupKey(list, "x"), Value());
    Value map(Map{{"count", "own"}, {"a", 1}});
    EXPECT_EQ(lookupKey(map, "count"), Value("own"));
    EXPECT_EQ(lookupKey(Value(Map{{"a", 1}}), "count"), Value(1));
    EXPECT_EQ(lookupKey(Value("abc"), "-1"), Value("c"));
    EXPECT_EQ(lookupKey(Value(""), "first"), Value());
    EXPECT_EQ(lookupKey(Value(5), "count"), Value());
    EXPECT_EQ(lookupKey(Value(), "a"), Value());
}

}  // namespace
}  // namespace tintwork::stencil
