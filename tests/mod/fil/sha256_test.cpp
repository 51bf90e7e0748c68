// The hash of files.
#include "fil/sha256.h"

#include <gtest/gtest.h>

namespace ostrel {
namespace {

std::string sha256(const std::string& text, std::size_t piece) {
  Sha256 hash;
  for (std::size_t i = 0; i < text.size(); i += piece) hash.update(text.substr(i, piece));
  return hash.hexDigest();
}

// The vectors of the standard, and lengths on both sides of where the padding takes another block.
TEST(Sha256, HashesLikeTheStandard) {
  EXPECT_EQ(sha256("", 1), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(sha256("abc", 2), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq", 56),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
  EXPECT_EQ(sha256(std::string(1000000, 'a'), 999),
            "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
  EXPECT_EQ(sha256(std::string(55, 'a'), 64),
            "9f4390f8d30c2dd92ec9f095b65e2b9ae9b0a925a5258e241c9f1e910f734318");
}

}  // namespace
}  // namespace ostrel
