#pragma once

#include <optional>
#include <string>

/// What the main bundle says under the key; empty where it says nothing.
std::string infoOf(const std::string& key);

/// Where a bundle of the name is, for an executable at an absolute path. An installed one, under
/// /usr, /usr/local or /opt, is in the folder of applications. Any other, such as one in a build
/// tree or in someone's home, is the folder that the executable is in.
std::string bundlePathOf(const std::string& executable, const std::string& name);

/// For tests: the main bundle is found by this executable, until it is given none.
void installMainExecutable(std::optional<std::string> path);
