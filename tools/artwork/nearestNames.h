// What a user may have meant by an unknown name.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace artwork {

// Insertions, deletions and replacements of one character that turn one word into the other; case does not count.
int editDistance(std::string_view a, std::string_view b);

// The nearest of the names, at most three, nearest first. Empty if none is near.
std::vector<std::string_view> nearestNames(std::string_view wrong, std::span<const std::string_view> names);

// "; did you mean drawPlay or drawPause?", or nothing.
std::string suggestion(std::string_view wrong, std::span<const std::string_view> names);

// In single quotes; a question mark replaces each character that would break the line or the terminal.
std::string inQuotes(std::string_view word);

}  // namespace artwork
