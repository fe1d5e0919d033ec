// Everything the library offers.
#pragma once

#include "qel/config/build_info.hpp"
#include "qel/config/endpoint_files.hpp"
#include "qel/config/error_code.hpp"
#include "qel/config/exceptions.hpp"
#include "qel/config/for_each_field.hpp"
#include "qel/config/http_endpoint.hpp"
#include "qel/config/http_protocol.hpp"
#include "qel/config/option.hpp"
#include "qel/config/parse_settings.hpp"
#include "qel/config/pid_files.hpp"
#include "qel/config/report.hpp"
#include "qel/config/server_settings.hpp"
#include "qel/config/validate_settings.hpp"
#include "qel/config/version.hpp"
