// The kind of listener that an endpoint file describes.
#pragma once

namespace qel::config {

/// 0 is plain HTTP; every other value counts as HTTPS.
enum class HTTPProtocol { http = 0, https = 1 };

} // namespace qel::config
