# Puppet: a template that the check refuses does not replace the file.
file { '/etc/orvane/flags':
  content      => template('orvane/flags.erb'),
  validate_cmd => '/usr/bin/orvane-config check --from %',
  notify       => Service['orvane'],
}
service { 'orvane':
  ensure => running,
}
