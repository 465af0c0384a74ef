include $(sort $(wildcard $(BR2_EXTERNAL_TOLVANE_PATH)/package/*/*.mk))
