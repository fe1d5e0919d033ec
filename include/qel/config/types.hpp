// The types that the settings records are made of.
#pragma once

#include "qel/config/detail/same_boost.hpp"
#include "qel/util/path.hpp"
#include "qel/util/ssl_context.hpp"

#include <boost/date_time/posix_time/posix_time_duration.hpp>
#include <boost/optional/optional.hpp>

#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace qel::config {

/// A setting that may be absent. Absent differs from every value, and is less than every value.
using boost::optional;

/// A length of time in microseconds. A record may hold a negative one (hours beyond the range wrap around) and special
/// values such as infinity, whose counts mean nothing: ask is_special() first.
using boost::posix_time::time_duration;
static_assert(time_duration::resolution() == boost::date_time::micro,
              "The library counts microseconds: a program defines no BOOST_DATE_TIME_POSIX_TIME_STD_CONFIG.");

using util::filesystem::Path;
using util::ssl::AccessMap;
using util::ssl::SslContext;
using util::ssl::SslVerifyPeerMode;

} // namespace qel::config
