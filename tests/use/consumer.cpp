// What crosses the library's boundary: exceptions with their types, streams, strings, error codes.
#include <qel/config/config.hpp>
#include <qel/msgid/msgid_exception.hpp>

#include <boost/exception/diagnostic_information.hpp>
#include <boost/exception_ptr.hpp>
#include <boost/throw_exception.hpp>

#include <iostream>
#include <sstream>

namespace config = qel::config;

#if !ZEP_CONFIG_VERSION_AT_LEAST(1, 0, 0) || ZEP_CONFIG_VERSION_AT_LEAST(2, 0, 0)
#error "these are the headers of another version"
#endif

namespace {

int failures = 0;

void expect(bool holds, const char* what) {
    if (holds) return;
    std::cout << "FAILED: " << what << '\n';
    ++failures;
}

/// Whether `act` throws something that a handler for E catches, with this text.
template <class E, class Act>
bool throws(Act act, const std::string& text) {
    try {
        act();
    } catch (const E& failure) {
        return boost::diagnostic_information(failure).find(text) != std::string::npos;
    } catch (...) {
    }
    return false;
}

/// A server's own exception, of a class that no other module has.
struct OwnError : config::config_state_error {
    using config_state_error::config_state_error;
};

/// The library's exceptions, thrown by the program: directly, to be cloned, and as derived classes.
template <class E>
void expect_throwable() {
    struct Derived : E {
        using E::E;
    };
    expect(throws<E>([] { throw E("plain"); }, "plain"), "thrown as it is");
    expect(throws<E>([] { throw Derived("derived"); }, "derived"), "a derived one is caught as its base");
    boost::exception_ptr clone;
    try {
        BOOST_THROW_EXCEPTION(Derived("cloned"));
    } catch (const std::runtime_error&) {
        clone = boost::current_exception();
    }
    for (const bool again : {false, true})
        expect(throws<Derived>([&] { boost::rethrow_exception(clone); }, again ? "consumer.cpp" : "cloned"),
               "a clone has the type, the text and the place");
}

template <class Own, class Act>
void expect_thrown(Act act, const std::string& text) {
    expect(throws<Own>(act, text), "caught as its own type");
    expect(throws<std::runtime_error>(act, text), "caught as std::runtime_error");
    expect(throws<boost::exception>(act, "serversettings"), "caught with the place of the throw");
    expect(!throws<config::config_state_error>(act, ""), "not caught as another type");
}

} // namespace

int main() {
    config::ServerSettings settings;
    expect_thrown<config::bad_config>([&] { return config::read_master_pid(settings); }, "no pid root");
    settings.pid_root(config::Path(u"no/such/place"));
    expect_thrown<config::config_io_error>([&] { return config::read_master_pid(settings); },
                                           "error opening no/such/place");

    expect_throwable<config::bad_config>();
    expect_throwable<config::config_io_error>();
    expect_throwable<config::config_state_error>();

    // In both directions: the library calls the hook, and catches what the hook throws.
    std::ostringstream refused;
    qel::msgid::set_legacy_error_hook([](const auto&) { throw OwnError("own"); });
    const auto bad = config::parse_settings(settings, {config::option::attach_cache(), u"bad"}, refused);
    expect(bad == config::error_code::parse_error() && refused.str().find("own (at option '") == 0,
           "the library catches the program's own exception");

    std::ostringstream out;
    const auto code = config::parse_settings(settings, {u"--nonsense"}, out);
    expect(out.str() == "unrecognized option: --nonsense\n", "its own stream holds the library's text");
    expect(code == config::error_code::unrecognized_flag(), "codes compare equal");
    expect(code.category() == config::error_code::get_category(), "there is one category");
    expect(config::error_code::success() != boost::system::error_code(), "success is the library's own");
    expect(config::parse_settings(settings, {config::option::auto_deploy_root(), u"D"}, out) ==
               config::error_code::success(),
           "a flag's text goes back in");
    expect(std::string(config::product_name()) == "Orvane", "the product has its name");
    expect(std::string(zep_config_version).size() == 12, "the version has its form");
    std::cout << (failures == 0 ? "passed\n" : "failed\n");
    return failures;
}
