# The feed's address and the key, checked: with wrong ones the program would never find an update,
# and who has built it would not notice. Both or none, since neither is good for anything alone.
set(feed_host "(\\[[0-9a-fA-F:.]+\\]|[^][/?#@: \";\\]+)")
set(loopback_host "(localhost|127\\.[0-9]+\\.[0-9]+\\.[0-9]+|\\[::1\\])")
set(feed_rest "(:[0-9]+)?([/?#][^ \";\\]*)?")

if(NOT "${VANTOREL_FEED_URL}${VANTOREL_UPDATE_KEY}" STREQUAL "")
  if("${VANTOREL_FEED_URL}" STREQUAL "" OR "${VANTOREL_UPDATE_KEY}" STREQUAL "")
    message(FATAL_ERROR "VANTOREL_FEED_URL and VANTOREL_UPDATE_KEY belong together")
  endif()
  if(NOT "${VANTOREL_FEED_URL}" MATCHES
      "^(https://${feed_host}|http://${loopback_host})${feed_rest}$")
    message(FATAL_ERROR "VANTOREL_FEED_URL is not the address of a feed: https, or http on loopback")
  endif()
  # 32 bytes
  string(LENGTH "${VANTOREL_UPDATE_KEY}" key_length)
  if(NOT key_length EQUAL 44 OR NOT "${VANTOREL_UPDATE_KEY}" MATCHES "^[A-Za-z0-9+/]+=$")
    message(FATAL_ERROR "VANTOREL_UPDATE_KEY is not the base64 of an Ed25519 public key")
  endif()
endif()
