// What a word counts by where it stands, and what a name loses. These numbers were chosen by
// trying: they are those with which most of the questions of bench/relevance/ that anybody may look
// at find what they ask for. Internal: no public header includes it.
#pragma once

#include <cstddef>

namespace reference::ask::share {

inline constexpr float last = 1.0F;
inline constexpr float purpose = 0.95F;
inline constexpr float phrase = 0.95F;
inline constexpr float synonym = 0.8F;
inline constexpr float compound = 0.8F;
inline constexpr float outer = 0.65F;
inline constexpr float passage = 0.8F;
inline constexpr float text = 0.35F;
inline constexpr float textSynonym = 0.5F;  // of what the word itself would count there
inline constexpr float twice = 0.1F;        // more, for a word in name and purpose
inline constexpr float weak = 0.25F;        // of what another word as rare would count

// The power of the share of the words that are found: two of four are less than half as good.
inline constexpr float forMissing = 1.6F;

// A word that so few names have is as rare as one that a single name has.
inline constexpr float rare = 5;

inline constexpr float forNameRest = 0.035F;    // for each part of the name not asked for
inline constexpr float forPurposeRest = 0.06F;  // for each word of the purpose not asked for
inline constexpr float longPurpose = 8;         // words of it that are counted at most
inline constexpr float forLength = 0.025F;      // each time that the text is twice as long
inline constexpr float forDepth = 0.04F;        // for each component beyond the usual
inline constexpr float usualDepth = 2;
inline constexpr float forClass = 0.92F;  // of what a function as near would count
// More for each time that twice as many items of the product name it, so many at most: what others
// refer to is what people use.
inline constexpr float mention = 0.02F;
inline constexpr float mostMentions = 64;
inline constexpr float forPrivate = 0.9F;
inline constexpr float forPackage = 0.4F;  // a package, where what is in it could be meant
inline constexpr float forOther = 0.6F;    // what cannot be called

// What has less than this of what the best has is noise.
inline constexpr float ofBest = 0.5F;
// What has all words, but less than this of what the best has, is a guess like others.
inline constexpr float asText = 1;
// What has less of the words, by their weight, is not likely to be meant.
inline constexpr float least = 0.4F;
// An item whose texts have less of the words is not looked at.
inline constexpr float worthReading = 0.3F;

// What more than one of so many names or texts of a product have says nothing in place of another
// word.
inline constexpr std::size_t commonInNames = 16;
inline constexpr std::size_t commonInTexts = 8;
// What so few have is not common, however small the product is.
inline constexpr std::size_t neverCommon = 4;

// Names and items that are looked at closely, and of these, texts that are read.
inline constexpr std::size_t mostLikely = 16;
inline constexpr std::size_t mostRead = 8;

}  // namespace reference::ask::share
