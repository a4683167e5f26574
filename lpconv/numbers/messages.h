#pragma once
// The fixed failure texts of the exact numbers, byte for byte as they are reported.

namespace lpconv::messages {

// Arithmetic and canonical form.
inline constexpr char kSignInField[] =
    "A ganze / zaehler / nenner sign has been set, though it should not be used";
inline constexpr char kSameAddress[] = "QQ: The ZZs have the same address";
inline constexpr char kInfinityInCommonDenominator[] =
    "a_z, b_z can not be set to ZZ::INF -- isInf is logic only available in QQ class";
inline constexpr char kInfMinusInf[] = "INF - INF is not defined";
inline constexpr char kInfTimesZero[] = "qq: INF * 0 is not defined!";
inline constexpr char kZeroTimesInf[] = "qq: 0 * INF is not defined!";
inline constexpr char kInfOverInf[] = "qq: oo / oo is not defined";
inline constexpr char kZeroOverZero[] = "0 / 0 is not defined";

// Text form.
inline constexpr char kParseError1[] = "QQ: parse error1";
inline constexpr char kParseError2[] = "QQ: parse error2";
inline constexpr char kParseError3[] = "QQ: parse error3";
inline constexpr char kDivisionByZero1[] = "QQ: division by zero1";
inline constexpr char kMalformedNumber1[] = "QQ: malformed number1";
inline constexpr char kMalformedNumber2[] = "QQ: malformed number2";
inline constexpr char kExponentOutOfRange[] = "QQ: exponent out of range";

// Roots and logarithms.
inline constexpr char kZerothRoot[] = "QQ: zero-th roots are not defined";
inline constexpr char kComplexRoot[] = "QQ: complex roots are not implemented";
inline constexpr char kDivisionByZero[] = "QQ: division by zero";
inline constexpr char kLog2MinusInf[] = "log2(-inf) is not implemented / defined";
inline constexpr char kLog2NotPositive[] = "log2(x), x <= 0 is not implemented / defined";
inline constexpr char kLogMinusInf[] = "log(-inf) is not implemented / defined";

// Conversion to the long floating type.
inline constexpr char kIntegerPartNotExact[] =
    "The QQ integer-part is not exactly representable as dbl_t";
inline constexpr char kNotRepresentable[] = "QQ is not representable as dbl_t";

}  // namespace lpconv::messages
