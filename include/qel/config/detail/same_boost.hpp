// Refuses a Boost that is not the library's. Classes of Boost cross the interface by value, and Boost changes them between
// releases without notice. Patch releases keep them.
#pragma once

#include <boost/version.hpp>

/// BOOST_VERSION of the Boost that the library was built with. Installing puts the number here, and the release into the
/// message. Where the library is part of the program's build, both have the same Boost.
#define ZEP_CONFIG_BOOST_VERSION BOOST_VERSION

#if BOOST_VERSION / 100 != ZEP_CONFIG_BOOST_VERSION / 100
#error "compile with Boost BOOST_RELEASE: the library was built with it, and BOOST_VERSION is another"
#endif
