# Salt: a template that the check refuses does not replace the file. Salt adds the name of a temporary file to check_cmd.
/etc/orvane/flags:
  file.managed:
    - source: salt://orvane/flags.j2
    - template: jinja
    - check_cmd: orvane-config check --from
orvane:
  service.running:
    - watch:
      - file: /etc/orvane/flags
