#include <lpconv/util/exceptions.h>

#include <gtest/gtest.h>

#include <exception>
#include <string>

namespace lpconv {
namespace {

TEST(ExceptionsTest, Messages) {
  EXPECT_STREQ(GeneralException("something").what(), "something");
  EXPECT_STREQ(GeneralException("").what(), "");
  EXPECT_STREQ(ReadException("").what(), "Read exception");
  EXPECT_STREQ(ReadException("Vector: bad stream").what(), "Vector: bad stream");
}

template <typename Thrown>
std::string handlerFor(const Thrown& thrown) {
  try {
    try {
      throw thrown;
    } catch (const std::exception&) {
      return "std::exception";
    } catch (const ReadException& e) {
      return std::string("ReadException: ") + e.what();
    } catch (const GeneralException& e) {
      return std::string("GeneralException: ") + e.what();
    }
  } catch (...) {
    return "none";
  }
}

TEST(ExceptionsTest, StandardHandlerDoesNotCatchTheFamily) {
  EXPECT_EQ(handlerFor(GeneralException("g")), "GeneralException: g");
  EXPECT_EQ(handlerFor(ReadException("")), "ReadException: Read exception");
  EXPECT_EQ(handlerFor(std::exception()), "std::exception");
}

}  // namespace
}  // namespace lpconv
