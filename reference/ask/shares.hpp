// What a word counts by where it stands, and what a name loses and gains. These numbers were chosen
// by trying: they are those with which most of the questions of bench/relevance/ that anybody may
// look at find what they ask for. Internal: no public header includes it.
#pragma once

namespace reference::ask::share {

inline constexpr float last = 1.0F;
inline constexpr float purpose = 0.95F;
inline constexpr float synonym = 1.0F;
inline constexpr float compound = 0.8F;
inline constexpr float outer = 0.8F;
inline constexpr float passage = 0.8F;
inline constexpr float text = 0.35F;
inline constexpr float textSynonym = 0.6F;  // of what the word itself would count there
inline constexpr float twice = 0.05F;       // more, for a word in name and purpose
inline constexpr float weak = 0.35F;        // of what another word as rare would count

inline constexpr float forRest = 0.05F;     // for each word of name and purpose not asked for
inline constexpr float forLength = 0.025F;  // each time that the text is twice as long
inline constexpr float forPrivate = 0.9F;
inline constexpr float forPackage = 0.6F;  // a package, where what is in it could be meant
inline constexpr float forOther = 0.6F;    // what cannot be called
inline constexpr float forMention = 0.1F;  // each time that the name is mentioned tenfold

// What has less than this of what the best has is noise.
inline constexpr float ofBest = 0.6F;
// What has less of the words, by their weight, is not likely to be meant.
inline constexpr float least = 0.4F;
// An item whose texts have less of the words is not read.
inline constexpr float worthReading = 0.3F;

}  // namespace reference::ask::share
