# The five states that the pictures show, each reached as a user reaches it and left on the screen.
# Sourced after stage.sh, whose stage is open, with the service started.

open_application() { # OPTION...
  start_application "$@"
  must window "$main_title"
  must enabled "$main_title" "$IDC_CHECK"
}

check_with_enter() {
  must focused "$main_title" "$IDC_CHECK"
  press "$main_title" Return
}

show_offer() {
  reply
  open_application --server "$address" --updater "$updater"
  check_with_enter
  must window "$update_title"
  must expect "$update_title" "$IDC_HEADING" "Editor 2.0.0 is available"
}

reply_mandatory() {
  reply -e 's/"min_supported_version": "[^"]*"/"min_supported_version": "1.5.0"/'
}

show_mandatory() {
  reply_mandatory
  open_application --server "$address" --updater "$updater"
  check_with_enter
  must expect "$update_title" "$IDC_HEADING" "Editor 2.0.0 is required"
  must expect "$update_title" "$IDC_REASON" "versions before 1.5.0 are no longer supported"
}

show_no_update() {
  reply
  open_application --server "$address" --updater "$updater" --version 2.0.0
  check_with_enter
  must expect "$main_title" "$IDC_OUTCOME" "Editor is up to date."
  must enabled "$main_title" "$IDC_CHECK"
}

# Port 9 of this machine has nobody behind it.
show_offline() {
  open_application --server http://127.0.0.1:9 --updater "$updater"
  check_with_enter
  must expect "$main_title" "$IDC_OUTCOME" "The update service could not be reached."
  must enabled "$main_title" "$IDC_CHECK"
  press "$main_title" alt+d
  must expect "$main_title" "$IDC_DETAILS" "Code 7 / HTTP request failed: "
}

show_mismatch() {
  reply -e 's/"sha256": "7/"sha256": "0/'
  open_application --server "$address" --updater "$updater"
  check_with_enter
  must focused "$update_title" "$IDC_UPDATE"
  press "$update_title" Return
  must expect "$update_title" "$IDC_OUTCOME" "damaged or was tampered with"
  must enabled "$update_title" "$IDC_UPDATE"
  press "$update_title" alt+d
  must expect "$update_title" "$IDC_DETAILS" "Code 5 / Downloaded update package sha256 mismatch"
}
