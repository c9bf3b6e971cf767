#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include <Common/TextConversion.h>

namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t kBytesPerGroup = 3;
constexpr std::size_t kCharactersPerGroup = 4;
// Small enough that a block is still in the first-level cache when the zeros of its resize are
// overwritten.
constexpr std::size_t kGroupsPerBlock = std::size_t{1} << 11U;

// The two characters of each 12-bit number.
using CharacterPair = std::array<char, 2>;
constexpr auto kPairs = [] {
    std::array<CharacterPair, 4096> pairs{};
    for (std::size_t bits = 0; bits < pairs.size(); ++bits)
        pairs[bits] = {kAlphabet[bits / 64], kAlphabet[bits % 64]};
    return pairs;
}();

// Four bytes in memory order: the three bytes of a group, then a mark, which is not 0 if the
// characters are not a group.
using Word = std::uint32_t;
constexpr unsigned char kMark = 0xFF;
constexpr Word kMarked = std::bit_cast<Word>(std::array<unsigned char, 4>{0, 0, 0, kMark});

// The contribution of each character to the word of its group, for each position in the group.
constexpr auto kWords = [] {
    std::array<std::array<Word, 256>, kCharactersPerGroup> words{};
    for (std::size_t place = 0; place < words.size(); ++place) {
        words[place].fill(kMarked);
        for (std::size_t value = 0; value < kAlphabet.size(); ++value) {
            const std::size_t bits = value << (18 - 6 * place);
            words[place][static_cast<unsigned char>(kAlphabet[value])] =
                std::bit_cast<Word>(std::array<unsigned char, 4>{static_cast<unsigned char>(bits >> 16U),
                                                                 static_cast<unsigned char>(bits >> 8U),
                                                                 static_cast<unsigned char>(bits), 0});
        }
    }
    return words;
}();

// Appends groups block by block. `convert` writes `count` groups from group `first` on and may
// write one more byte. It returns the number of groups before the first one that it could not
// convert. Returns the sum of these numbers.
template <class Convert>
std::size_t appendGroups(std::size_t groups, std::size_t groupSize, std::string& output,
                         const Convert& convert) {
    std::size_t done = 0;
    for (bool hasStopped = false; done < groups && !hasStopped;) {
        const std::size_t count = std::min(kGroupsPerBlock, groups - done);
        const std::size_t start = done * groupSize;
        output.resize(start + count * groupSize + 1);
        const std::size_t converted = convert(done, count, output.data() + start);
        done += converted;
        hasStopped = converted < count;
    }
    output.resize(done * groupSize);
    return done;
}

// Reads eight bytes as a number, highest byte first.
std::uint64_t eightBytes(const unsigned char* bytes) {
    std::uint64_t number = 0;
    std::memcpy(&number, bytes, sizeof number);
    return std::endian::native == std::endian::little ? __builtin_bswap64(number) : number;
}

void encodePair(std::uint64_t bits, char* characters) {
    std::memcpy(characters, kPairs[bits % kPairs.size()].data(), sizeof(CharacterPair));
}

void encodeGroups(const unsigned char* bytes, std::size_t count, char* characters) {
    std::size_t i = 0;
    // Encode two groups per read. A read covers two bytes more than the groups, so the last groups
    // follow singly.
    for (; i + 2 < count; i += 2) {
        const std::uint64_t bits = eightBytes(bytes + i * kBytesPerGroup);
        char* const output = characters + i * kCharactersPerGroup;
        encodePair(bits >> 52U, output);
        encodePair(bits >> 40U, output + 2);
        encodePair(bits >> 28U, output + 4);
        encodePair(bits >> 16U, output + 6);
    }
    for (; i < count; ++i) {
        const unsigned char* const group = bytes + i * kBytesPerGroup;
        const unsigned bits = unsigned{group[0]} << 16U | unsigned{group[1]} << 8U | unsigned{group[2]};
        encodePair(bits >> 12U, characters + i * kCharactersPerGroup);
        encodePair(bits, characters + i * kCharactersPerGroup + 2);
    }
}

Word wordAt(const char* characters) {
    Word word = 0;
    for (std::size_t place = 0; place < kCharactersPerGroup; ++place)
        word |= kWords[place][static_cast<unsigned char>(characters[place])];
    return word;
}

// Returns the number of groups before the first invalid one.
std::size_t decodeGroups(const char* characters, std::size_t count, char* bytes) {
    std::size_t i = 0;
    const auto put = [&](Word word) { std::memcpy(bytes + i++ * kBytesPerGroup, &word, sizeof word); };
    // Decode two groups per check, up to the first invalid pair.
    for (; i + 1 < count;) {
        const Word first = wordAt(characters + i * kCharactersPerGroup);
        const Word second = wordAt(characters + (i + 1) * kCharactersPerGroup);
        if (((first | second) & kMarked) != 0) break;
        put(first);
        put(second);
    }
    for (; i < count;) {
        const Word word = wordAt(characters + i * kCharactersPerGroup);
        if ((word & kMarked) != 0) break;
        put(word);
    }
    return i;
}

// Appends the bytes of an incomplete group.
void decodeRest(std::string_view characters, std::string& bytes) {
    std::array<char, kCharactersPerGroup> last{};
    last.fill(kAlphabet.front());
    const std::size_t count =
        std::min({characters.find_first_not_of(kAlphabet), characters.size(), kCharactersPerGroup - 1});
    if (count < 2) return;
    characters.copy(last.data(), count);
    std::array<char, sizeof(Word)> group{};
    decodeGroups(last.data(), 1, group.data());
    bytes.append(group.data(), count - 1);
}

}  // namespace

std::string encodeBase64(const unsigned char* data, unsigned int size) {
    const std::size_t groups = size / kBytesPerGroup;
    const std::size_t rest = size % kBytesPerGroup;
    std::string text;
    text.reserve((groups + 1) * kCharactersPerGroup);
    appendGroups(groups, kCharactersPerGroup, text, [&](std::size_t first, std::size_t count, char* output) {
        encodeGroups(data + first * kBytesPerGroup, count, output);
        return count;
    });
    if (rest == 0) return text;

    std::array<unsigned char, kBytesPerGroup> bytes{};
    std::copy_n(data + groups * kBytesPerGroup, rest, bytes.begin());
    std::array<char, kCharactersPerGroup> last{};
    encodeGroups(bytes.data(), 1, last.data());
    std::fill(last.begin() + static_cast<std::ptrdiff_t>(rest) + 1, last.end(), '=');
    return text.append(last.data(), last.size());
}

std::string decodeBase64(const std::string& text) {
    std::string bytes;
    const std::size_t groups = text.size() / kCharactersPerGroup;
    bytes.reserve((groups + 1) * kBytesPerGroup);
    const std::size_t done =
        appendGroups(groups, kBytesPerGroup, bytes, [&](std::size_t first, std::size_t count, char* output) {
            return decodeGroups(text.data() + first * kCharactersPerGroup, count, output);
        });
    decodeRest(std::string_view(text).substr(done * kCharactersPerGroup), bytes);
    return bytes;
}
