vantorel_test(app/update/AppcastTest LINKS vantorel_update)
vantorel_test(app/update/UpdateAddressTest LINKS vantorel_update)
vantorel_test(app/update/UpdateChoiceTest LINKS vantorel_update)
vantorel_test(app/update/UpdateSettingsTest LINKS vantorel_update)
vantorel_test(app/update/UpdateTextsTest LINKS vantorel_update)

# The servers, keys and certificates of these are their own. Qt Test's header is another one where Qt
# Network is linked, so the precompiled one is not theirs.
vantorel_test(app/update/TransferTest LINKS vantorel_update Qt6::Network OpenSSL::Crypto)
vantorel_test(app/update/UpdaterTest LINKS vantorel_update Qt6::Network OpenSSL::Crypto)
vantorel_test(app/update/UpdaterDiskFullTest ROOT LINKS vantorel_update Qt6::Network OpenSSL::Crypto)
set_target_properties(app_update_TransferTest app_update_UpdaterTest app_update_UpdaterDiskFullTest
  PROPERTIES DISABLE_PRECOMPILE_HEADERS ON)

add_test(NAME app.update.FeedOptions
  COMMAND "${CMAKE_COMMAND}" -P "${CMAKE_CURRENT_SOURCE_DIR}/app/update/FeedOptions.cmake")
set_tests_properties(app.update.FeedOptions PROPERTIES LABELS app)
