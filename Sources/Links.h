// The program's pages on the web. It has no network code of its own: a page is handed to the
// desktop's browser.
#pragma once

#include "Foundation/Foundation.h"

#include <memory>

namespace Links {

enum class Purpose { support, upgrade };

/// The page that supports the maker.
const std::shared_ptr<NSURL>& support();
/// The page of the paid edition.
const std::shared_ptr<NSURL>& upgrade();

/// Opens the page. Without one, says in an alert that what was asked for is coming.
void open(const std::shared_ptr<NSURL>& url, Purpose what);

} // namespace Links
