#include <lpconv/numbers/precision_exceptions.h>

#include <gtest/gtest.h>

#include <exception>
#include <string>

namespace lpconv {
namespace {

struct MessageCase {
  const char* given;
  const char* precision;
  const char* preComma;
  const char* postComma;
};

TEST(PrecisionExceptionTest, MessageRules) {
  const MessageCase cases[] = {
      {"", "Precision exception", "PreCommaPrecision exception", "PostCommaPrecision exception"},
      {"x", "x", "PreCommaPrecision exception: x", "PostCommaPrecision exception: x"},
      {"QQ is not representable as dbl_t", "QQ is not representable as dbl_t",
       "PreCommaPrecision exception: QQ is not representable as dbl_t",
       "PostCommaPrecision exception: QQ is not representable as dbl_t"},
  };
  for (const MessageCase& c : cases) {
    SCOPED_TRACE(c.given);
    EXPECT_STREQ(PrecisionException(c.given).what(), c.precision);
    EXPECT_STREQ(PreCommaPrecisionException(c.given).what(), c.preComma);
    EXPECT_STREQ(PostCommaPrecisionException(c.given).what(), c.postComma);
  }
}

// Which handler takes an exception: 0 none of those below, 1 the first, and so on.
template <typename Thrown>
int handlerFor(const Thrown& thrown) {
  try {
    try {
      throw thrown;
    } catch (const PreCommaPrecisionException&) {
      return 1;
    } catch (const std::exception&) {
      return 2;
    } catch (const PrecisionException&) {
      return 3;
    } catch (const GeneralException&) {
      return 4;
    }
  } catch (...) {
    return 0;
  }
}

TEST(PrecisionExceptionTest, HandlerMatching) {
  EXPECT_EQ(handlerFor(PreCommaPrecisionException("")), 1);
  // Not a PreComma one, and the standard exception handler is skipped.
  EXPECT_EQ(handlerFor(PostCommaPrecisionException("")), 3);
  EXPECT_EQ(handlerFor(PrecisionException("")), 3);
}

TEST(PrecisionExceptionTest, GeneralHandlerCatchesTheFamily) {
  try {
    throw PostCommaPrecisionException("y");
  } catch (const GeneralException& e) {
    EXPECT_STREQ(e.what(), "PostCommaPrecision exception: y");
  }
}

}  // namespace
}  // namespace lpconv
