#include "template/array_head.h"

#include <gtest/gtest.h>
#include <json/value.h>

#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "support/json.h"

namespace {

/// An array of `size` entries, none of them alike.
Json::Value Numbers(int size) {
  Json::Value array(Json::arrayValue);
  for (int i = 0; i < size; ++i) array.append(100 + i);
  return array;
}

/// An array that has the entries `indices` and no others.
Json::Value WithGaps(const std::vector<Json::ArrayIndex>& indices) {
  Json::Value array(Json::arrayValue);
  for (const Json::ArrayIndex index : indices) array[index] = 100 + static_cast<int>(index);
  return array;
}

/// The stored entries; gaps count for nothing.
int StoredEntries(const Json::Value& array) {
  return static_cast<int>(std::distance(array.begin(), array.end()));
}

/// Reading entry by entry, in a value of its own for each index, since an entry that is missing is
/// added by reading it.
template <Json::ArrayIndex Count>
void ExpectReadsAsIndexed(const Json::Value& original) {
  SCOPED_TRACE("first " + std::to_string(Count));
  for (Json::ArrayIndex index = 0; index < Count + 2; ++index) {
    SCOPED_TRACE(index);
    const ttr::CArrayHead<const Json::Value, Count> constant(original);
    EXPECT_EQ(&constant[index], &original[index]);

    Json::Value byHead = original;
    const ttr::CArrayHead<Json::Value, Count> head(byHead);
    EXPECT_EQ(byHead, original);
    EXPECT_EQ(StoredEntries(byHead), StoredEntries(original));
    const Json::Value* const entry = &head[index];
    Json::Value plainly = original;
    EXPECT_EQ(*entry, plainly[index]);
    EXPECT_EQ(byHead, plainly);
    EXPECT_EQ(StoredEntries(byHead), StoredEntries(plainly));
    EXPECT_EQ(entry, &byHead[index]);
  }
}

/// Writing to many entries in turn, through one head.
template <Json::ArrayIndex Count>
void ExpectWritesAsIndexed(const Json::Value& original, std::mt19937& random) {
  SCOPED_TRACE("first " + std::to_string(Count));
  Json::Value byHead = original;
  Json::Value plainly = original;
  const ttr::CArrayHead<Json::Value, Count> head(byHead);
  for (int i = 0; i < 6; ++i) {
    const auto index = static_cast<Json::ArrayIndex>(random() % (Count + 4));
    head[index] = i;
    plainly[index] = i;
    EXPECT_EQ(byHead, plainly);
    EXPECT_EQ(byHead.size(), plainly.size());
  }
}

/// The text of JsonCpp's error when the entry `index` is asked for.
template <typename Indexed>
std::string ErrorAt(Indexed& indexed, Json::ArrayIndex index) {
  try {
    indexed[index];
  } catch (const Json::LogicError& error) {
    return error.what();
  }
  return "no error";
}

template <Json::ArrayIndex Count>
void ExpectThrowsAsIndexed(const Json::Value& original) {
  SCOPED_TRACE("first " + std::to_string(Count));
  for (Json::ArrayIndex index = 0; index < Count + 2; ++index) {
    SCOPED_TRACE(index);
    const ttr::CArrayHead<const Json::Value, Count> constant(original);
    EXPECT_EQ(ErrorAt(constant, index), ErrorAt(original, index));
    EXPECT_NE(ErrorAt(constant, index), "no error");

    Json::Value changeable = original;
    const ttr::CArrayHead<Json::Value, Count> head(changeable);
    EXPECT_EQ(ErrorAt(head, index), ErrorAt(changeable, index));
    EXPECT_NE(ErrorAt(head, index), "no error");
    EXPECT_EQ(changeable, original);
  }
}

void ExpectReads(const Json::Value& array) {
  SCOPED_TRACE(array.toStyledString());
  ExpectReadsAsIndexed<1>(array);
  ExpectReadsAsIndexed<2>(array);
  ExpectReadsAsIndexed<4>(array);
  ExpectReadsAsIndexed<6>(array);
}

void ExpectWrites(const Json::Value& array, std::mt19937& random) {
  SCOPED_TRACE(array.toStyledString());
  ExpectWritesAsIndexed<1>(array, random);
  ExpectWritesAsIndexed<2>(array, random);
  ExpectWritesAsIndexed<4>(array, random);
  ExpectWritesAsIndexed<6>(array, random);
}

/// An array of up to 8 entries, every other one with gaps.
Json::Value RandomArray(std::mt19937& random) {
  if (random() % 2 == 0) return Numbers(static_cast<int>(random() % 9));
  std::vector<Json::ArrayIndex> indices(random() % 6);
  for (Json::ArrayIndex& index : indices) index = static_cast<Json::ArrayIndex>(random() % 9);
  return WithGaps(indices);
}

TEST(ArrayHead, EntriesAreThoseOfTheIndexOperator) {
  for (int size = 0; size <= 8; ++size) ExpectReads(Numbers(size));
  for (const char* text : {"[null]", "[null,null,null,null,null,null,null]", "[1,null,3]",
                           R"([[1,2],{"0":1},"x",2.5,true,7])"}) {
    ExpectReads(Parse(text));
  }
}

TEST(ArrayHead, EntriesOfAnArrayWithGapsAreThoseOfTheIndexOperator) {
  const std::vector<Json::ArrayIndex> cases[] = {
      {3},    {1},       {0, 2},          {0, 1, 3},          {0, 1, 5},       {1, 2, 3, 4},
      {0, 9}, {0, 1, 9}, {0, 1, 2, 3, 9}, {0, 1, 2, 3, 4, 6}, {0, 1, 2, 4, 5}, {7, 0, 3}};
  for (const auto& indices : cases) ExpectReads(WithGaps(indices));
}

TEST(ArrayHead, NullIsAnArrayWithoutEntries) { ExpectReads(Json::Value()); }

TEST(ArrayHead, WritingExtendsAsTheIndexOperatorDoes) {
  std::mt19937 random(1);
  for (int size = 0; size <= 8; ++size) ExpectWrites(Numbers(size), random);
  ExpectWrites(WithGaps({3}), random);
  ExpectWrites(WithGaps({0, 1, 5}), random);
  ExpectWrites(Json::Value(), random);

  Json::Value array = Numbers(2);
  const ttr::CArrayHead<Json::Value, 4> head(array);
  EXPECT_EQ(array, Parse("[100, 101]"));
  head[3] = "last";
  EXPECT_EQ(array.size(), 4U);
  EXPECT_EQ(array[3], Json::Value("last"));
  EXPECT_EQ(array[2], Json::Value());
}

TEST(ArrayHead, RandomArraysAreReadAndWrittenAsByTheIndexOperator) {
  std::mt19937 random(1);
  int withGaps = 0;
  for (int i = 0; i < 3000 && !::testing::Test::HasFailure(); ++i) {
    const Json::Value array = RandomArray(random);
    ExpectReads(array);
    ExpectWrites(array, random);
    if (StoredEntries(array) < static_cast<int>(array.size())) ++withGaps;
  }
  EXPECT_GT(withGaps, 1000);
}

TEST(ArrayHead, ObjectsAndScalarsThrowAsTheIndexOperatorDoes) {
  for (const char* text :
       {"{}", R"({"0":1})", R"({"a":1,"b":2,"c":3})", R"({"0":0,"1":1,"2":2,"3":3,"4":4,"5":5})",
        "5", "-5", "2.5", "true", "false", R"("text")", R"("")"}) {
    SCOPED_TRACE(text);
    ExpectThrowsAsIndexed<1>(Parse(text));
    ExpectThrowsAsIndexed<2>(Parse(text));
    ExpectThrowsAsIndexed<4>(Parse(text));
    ExpectThrowsAsIndexed<6>(Parse(text));
  }
}

}  // namespace
