vantorel_test(support/BytesFormatterTest LINKS vantorel_support)
vantorel_test(support/BytesToStringTest LINKS vantorel_support)
vantorel_test(support/ExtensionImageTest LINKS vantorel_support)
vantorel_test(support/FormatExpanderTest LINKS vantorel_support)
vantorel_test(support/IntegerToStringTest LINKS vantorel_support)
vantorel_test(support/LogCallerTest LINKS vantorel_support)
vantorel_test(support/LogPathCheckTest LINKS vantorel_support)
vantorel_test(support/LoggerAsRootTest ROOT LINKS vantorel_support)
vantorel_test(support/LoggerPermissionsTest LINKS vantorel_support)
vantorel_test(support/MainStatusToImageTest LINKS vantorel_support)
vantorel_test(support/NumberTextTest LINKS vantorel_support)
vantorel_test(support/PercentageToStringTest LINKS vantorel_support)
vantorel_test(support/SecondsToStringTest LINKS vantorel_support)
vantorel_test(support/StatusToImageTest LINKS vantorel_support)
vantorel_test(support/TimeFormatterTest LINKS vantorel_support)
vantorel_test(support/ValueTransformerRegistryTest LINKS vantorel_support)
vantorel_test(support/ValueTransformerTest LINKS vantorel_support)
vantorel_test(support/NotificationCenterTest LINKS vantorel_notification)

# In each of the zones that the test knows; the first has no name of its own.
vantorel_test(support/VTLDateTest LINKS vantorel_support)
set_tests_properties(support.VTLDate PROPERTIES ENVIRONMENT "TZ=UTC0")
foreach(zone
    CentralEurope=CET-1CEST,M3.5.0,M10.5.0/3
    India=IST-5:30
    NewSouthWales=AEST-10AEDT,M10.1.0,M4.1.0/3
    Newfoundland=NST3:30NDT,M3.2.0,M11.1.0
    Nepal=<+0545>-5:45
    Chatham=<+1245>-12:45<+1345>,M9.5.0/2:45,M4.1.0/3:45
    NewYork=EST5EDT,M3.2.0,M11.1.0)
  string(REGEX MATCH "^([^=]*)=(.*)$" zone "${zone}")
  add_test(NAME support.VTLDate.${CMAKE_MATCH_1} COMMAND support_VTLDateTest)
  set_tests_properties(support.VTLDate.${CMAKE_MATCH_1} PROPERTIES
    LABELS support ENVIRONMENT "TZ=${CMAKE_MATCH_2}")
endforeach()
