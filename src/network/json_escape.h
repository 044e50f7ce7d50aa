#ifndef KORVIXSDK_NETWORK_JSON_ESCAPE_H_
#define KORVIXSDK_NETWORK_JSON_ESCAPE_H_

namespace korvixsdk {

/// What \b, \f, \n, \r and \t stand for (RFC 8259, section 7); any other character stands for
/// itself here, and it is for the caller to say which of them may be escaped.
inline char EscapedCharacter(char escape) {
  switch (escape) {
    case 'b':
      return '\b';
    case 'f':
      return '\f';
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    case 't':
      return '\t';
    default:
      return escape;
  }
}

}  // namespace korvixsdk

#endif  // KORVIXSDK_NETWORK_JSON_ESCAPE_H_
