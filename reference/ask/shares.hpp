// What a word counts by where it stands, and what a name loses and gains. These numbers were chosen
// by trying: they are those with which most of the questions of bench/relevance/ that anybody may
// look at find what they ask for. Internal: no public header includes it.
#pragma once

#include <cstdlib>
namespace reference::ask::share {
inline float param(const char* n, float d) {
    const char* v = std::getenv(n);
    return v ? static_cast<float>(std::atof(v)) : d;
}
inline const float pool = param("pool", 16);

inline const float last = param("last", 1.0F);
inline const float purpose = param("purpose", 0.95F);
inline const float synonym = param("synonym", 1.0F);
inline const float compound = param("compound", 0.8F);
inline const float outer = param("outer", 0.8F);
inline const float passage = param("passage", 0.8F);
inline const float text = param("text", 0.35F);
inline const float textSynonym =
    param("textSynonym", 0.6F);                    // of what the word itself would count there
inline const float twice = param("twice", 0.05F);  // more, for a word in name and purpose
inline const float weak = param("weak", 0.35F);    // of what another word as rare would count

inline const float forRest =
    param("forRest", 0.05F);  // for each word of name and purpose not asked for
inline const float forLength =
    param("forLength", 0.025F);  // each time that the text is twice as long
inline const float forPrivate = param("forPrivate", 0.9F);
inline const float forPackage =
    param("forPackage", 0.6F);  // a package, where what is in it could be meant
inline const float forOther = param("forOther", 0.6F);  // what cannot be called
inline const float forMention =
    param("forMention", 0.1F);  // each time that the name is mentioned tenfold

// What has less than this of what the best has is noise.
inline const float ofBest = param("ofBest", 0.6F);
// What has less of the words, by their weight, is not likely to be meant.
inline const float least = param("least", 0.4F);
// An item whose texts have less of the words is not read.
inline const float worthReading = param("worthReading", 0.3F);

}  // namespace reference::ask::share
