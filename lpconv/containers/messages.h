#pragma once
// The fixed failure texts of the containers, byte for byte as they are reported. Two keep their
// historical spelling ("array: ..." and "Matrix row ..."); the digits tell sites apart.

namespace lpconv::messages {

inline constexpr char kArrayDimensionNegative[] = "array: dimension < 0";
inline constexpr char kArrayIndexOutOfRange[] = "Array: index out of range";

inline constexpr char kSerializableArrayNoStart[] = "SerializableArray: no start found";

inline constexpr char kVectorBadStream[] = "Vector: bad stream";
inline constexpr char kVectorBadInput[] = "Vector: bad input";
inline constexpr char kVectorBadInput2[] = "Vector: bad input2";
inline constexpr char kVectorBadInput3[] = "Vector: bad input3";
inline constexpr char kVectorDimensionMismatch2[] = "Vector: dimension mismatch2";
inline constexpr char kVectorDimensionMismatch9[] = "Vector: dimension mismatch9";

inline constexpr char kMatrixInvalidSize[] = "Matrix: invalid size";
inline constexpr char kMatrixBadStream[] = "Matrix: bad stream";
inline constexpr char kMatrixBadInput[] = "Matrix: bad input";
inline constexpr char kMatrixRowDimensionMismatch[] = "Matrix row dimension mismatch";

}  // namespace lpconv::messages
