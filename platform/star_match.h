#pragma once

#include <cstddef>
#include <optional>

namespace sylvex {

/// Matches a pattern of tokens with a sequence of things: a star takes any number of them, any other token the one that
/// it fits. Gives how many tokens have been used up when all things are taken, nothing when they cannot be. What a star
/// has taken grows by one where the rest fails: at most each token is tried with each thing once a star.
template <class IsStar, class Fits>
std::optional<std::size_t> MatchStars(std::size_t tokens, std::size_t things, IsStar&& isStar, Fits&& fits)
{
    std::size_t thing = 0;
    std::size_t token = 0;
    std::optional<std::size_t> behindStar;
    std::size_t taken = 0;
    while (thing < things) {
        if (token < tokens && isStar(token)) {
            behindStar = ++token;
            taken = thing;
        } else if (token < tokens && fits(token, thing)) {
            ++token;
            ++thing;
        } else if (behindStar) {
            token = *behindStar;
            thing = ++taken;
        } else {
            return std::nullopt;
        }
    }
    return token;
}

}  // namespace sylvex
