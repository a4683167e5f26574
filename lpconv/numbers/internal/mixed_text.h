#pragma once
// The written form of a finite mixed number, laid out once for every writer and for the length
// of the text: "0" when both parts are zero; otherwise a "-" for a negative value, the whole part
// when it is not zero, ":" when both parts are not, and the fraction "p/d" (just "p" when d is 1,
// which only a value that is not canonical has). The infinities are written "inf" and "-inf".

namespace lpconv::detail {

// The sink takes characters (mark) and parts (part) and tells zero and one parts apart.
template <typename Part, typename Sink>
void layOutMixed(Sink& sink, bool negative, const Part& whole, const Part& numerator,
                 const Part& denominator) {
  const bool hasWhole = !sink.isZero(whole);
  const bool hasFraction = !sink.isZero(numerator);
  if (!hasWhole && !hasFraction) {
    sink.mark('0');
    return;
  }
  if (negative) sink.mark('-');
  if (hasWhole) {
    sink.part(whole);
    if (hasFraction) sink.mark(':');
  }
  if (hasFraction) {
    sink.part(numerator);
    if (!sink.isOne(denominator)) {
      sink.mark('/');
      sink.part(denominator);
    }
  }
}

}  // namespace lpconv::detail
