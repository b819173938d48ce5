// The encodings that documents and narrow text come in.
#pragma once

namespace qvox {

// 0 stands for an encoding that isn't known yet.
enum EncodingId : int { UTF8 = 1, UTF16 = 2, SJIS = 3, EUC = 4, JIS = 5 };

// What narrow text is in wherever the caller or the system hands it over.
inline constexpr EncodingId osEncoding = SJIS;

}  // namespace qvox
