#include <gtest/gtest.h>
#include <lpconv/numbers/qq.h>

#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/numbers/test_support.h"

namespace lpconv {
namespace {

using testing::outcome;
using testing::Rational;
using Oracle = std::function<void(mpq_ptr r, mpq_srcptr a, mpq_srcptr b)>;
using Arithmetic = QQ& (*)(QQ&, const QQ&, const QQ&);

// Always true without the shared one, where the operations below run on limbs of their own.
bool isShared(const ZZ& z) {
  return !LPCONV_SHARED_ONE || (z.value->_mp_alloc == 0 && z.value->_mp_size != 0);
}

// Every operation that writes a QQ, in each aliasing form, on values whose fields share the limb
// of 1: the result (or the reported failure) is the one the same values give with limbs of their
// own, and for finite results the value of GMP's rationals.
TEST(SharedOneTest, QQOperationsAgreeWithOwnedLimbsAndRationals) {
  std::vector<std::tuple<std::string, std::function<QQ(QQ&, QQ&)>, Oracle>> cases;
  // clang-format off
  const std::tuple<const char*, Arithmetic, Oracle> arithmetic[] = {
      {"add", add, mpq_add}, {"sub", sub, mpq_sub}, {"mul", mul, mpq_mul}, {"div", div, mpq_div}};
  for (const auto& [name, op, oracle] : arithmetic) {
    cases.emplace_back(std::string(name) + "(a, a, b)", [op = op](QQ& a, QQ& b) { return op(a, a, b); }, oracle);
    cases.emplace_back(std::string(name) + "(b, a, b)", [op = op](QQ& a, QQ& b) { return op(b, a, b); }, oracle);
    cases.emplace_back(std::string(name) + "(a, a, a)", [op = op](QQ& a, QQ&) { return op(a, a, a); },
                       [oracle = oracle](mpq_ptr r, mpq_srcptr a, mpq_srcptr) { oracle(r, a, a); });
  }
  const auto second = [](mpq_ptr r, mpq_srcptr, mpq_srcptr b) { mpq_set(r, b); };
  cases.emplace_back("a--", [](QQ& a, QQ&) { return a--, a; },
                     [](mpq_ptr r, mpq_srcptr a, mpq_srcptr) { mpq_set_ui(r, 1, 1), mpq_sub(r, a, r); });
  cases.emplace_back("-a", [](QQ& a, QQ&) { return -std::move(a); }, [](mpq_ptr r, mpq_srcptr a, mpq_srcptr) { mpq_neg(r, a); });
  cases.emplace_back("a = b", [](QQ& a, QQ& b) { return a = b; }, second);
  cases.emplace_back("swap, a *= b", [](QQ& a, QQ& b) { return std::swap(a, b), a *= b; }, mpq_mul);
  cases.emplace_back("in >> a", [](QQ& a, QQ& b) { return std::istringstream(toString(b)) >> a, a; }, second);
  // A whole number written into the fraction (the documented raw write first makes the field its
  // own), or the shared one over 1 into an integer, then carried into ganze.
  cases.emplace_back("normalize(a + 3 in the fraction)", [](QQ& a, QQ&) {
        return a.zaehler.ensureOwnLimbs(), mpz_addmul_ui(a.zaehler.value, a.nenner.value, 3), normalize(a); },
      [](mpq_ptr r, mpq_srcptr a, mpq_srcptr) { mpq_set_si(r, mpq_sgn(a) < 0 ? -3 : 3, 1), mpq_add(r, a, r); });
  cases.emplace_back("normalize(integer a + shared 1/1)", [](QQ& a, QQ&) {
        if (a.zaehler.isZero()) a.zaehler = std::move(QQ(1L).nenner);
        return normalize(a); },
      [](mpq_ptr r, mpq_srcptr a, mpq_srcptr) {
        mpq_set_si(r, mpz_cmp_ui(mpq_denref(a), 1) != 0 ? 0 : mpq_sgn(a) < 0 ? -1 : 1, 1), mpq_add(r, a, r); });
  const QQ one(1L);
  const QQ values[] = {QQ(), one, QQ(-1L), QQ(42L), QQ(1L) / QQ(2L), QQ(-1L) / QQ(3L), QQ(true), QQ(false),
                       QQ("1"), fromDbl(1e30L), fromDbl(-0.5L)};
  // clang-format on
  Rational ra, rb, expected, got;
  for (const QQ& x : values) {
    ASSERT_TRUE(isShared(x.ganze) || isShared(x.zaehler) || isShared(x.nenner)) << toString(x);
  }
  for (const auto& [name, apply, oracle] : cases) {
    for (const QQ& x : values) {
      for (const QQ& y : values) {
        const std::string context = name + " with a = " + toString(x) + ", b = " + toString(y);
        QQ a = x, b = y, ownA = x, ownB = y, result;
        for (ZZ* z :
             {&ownA.ganze, &ownA.zaehler, &ownA.nenner, &ownB.ganze, &ownB.zaehler, &ownB.nenner}) {
          z->ensureOwnLimbs();
        }
        bool finished = false;
        const std::string text = outcome([&, &apply = apply] {
          return result = apply(a, b), finished = true, toString(result);
        });
        EXPECT_EQ(text, outcome([&, &apply = apply] { return toString(apply(ownA, ownB)); }))
            << context;
        if (!finished || x.isInf || y.isInf || result.isInf) continue;
        EXPECT_TRUE(testing::isCanonical(result)) << context;
        testing::toRational(x, ra.value);
        testing::toRational(y, rb.value);
        oracle(expected.value, ra.value, rb.value);
        testing::toRational(result, got.value);
        EXPECT_TRUE(mpq_equal(got.value, expected.value)) << context;
      }
    }
  }
}

// Every in-place operation of ZZ on the shared one moved out of a QQ, and on its negation,
// against the same operation on a copy (copies own their limbs).
TEST(SharedOneTest, ZZOperationsInPlace) {
  // clang-format off
  const std::pair<const char*, std::function<void(ZZ& a, const ZZ& b)>> cases[] = {
      {"+=", [](ZZ& a, const ZZ& b) { a += b; }}, {"-=", [](ZZ& a, const ZZ& b) { a -= b; }},
      {"*=", [](ZZ& a, const ZZ& b) { a *= b; }}, {"/=", [](ZZ& a, const ZZ& b) { a /= b; }},
      {"%=", [](ZZ& a, const ZZ& b) { a %= b; }}, {"++a", [](ZZ& a, const ZZ&) { ++a; }},
      {"a++", [](ZZ& a, const ZZ&) { a++; }}, {"add(a, b, a)", [](ZZ& a, const ZZ& b) { add(a, b, a); }},
      {"sub(b, a, a)", [](ZZ& a, const ZZ& b) { sub(b, a, a); }}, {"pow(a, b, a)", [](ZZ& a, const ZZ& b) { pow(a, b, a); }},
      {"sqrtRem(a, root, a)", [](ZZ& a, const ZZ&) { ZZ root; sqrtRem(abs(a), root, a); }},
      {"stripTrailingZeros", [](ZZ& a, const ZZ&) { stripTrailingZeros(a); }},
      {"dropLastDigits(a, 1)", [](ZZ& a, const ZZ&) { dropLastDigits(a, 1); }},
      {"appendZeros(a, 2)", [](ZZ& a, const ZZ&) { appendZeros(a, 2); }},
  };
  // clang-format on
  for (const auto& [name, op] : cases) {
    for (const bool negative : {false, true}) {
      for (const ZZ& b : {ZZ(3L), ZZ(-2L), ZZ(1L)}) {
        ZZ a = std::move(QQ(1L).nenner);
        if (negative) negate(a);
        ASSERT_TRUE(isShared(a));
        ZZ own(a);
        op(a, b);
        op(own, b);
        EXPECT_EQ(toString(a), toString(own))
            << name << " on " << (negative ? -1 : 1) << ", b = " << b;
      }
    }
  }
}

}  // namespace
}  // namespace lpconv
