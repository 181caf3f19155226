#pragma once

// Ids of the program's controls and resources. Tests and assistive tools find the controls by them,
// so a number once given stays. IDC_<form>_<control>: literal numbers, 1000 to 1999 frmTrimbrook,
// 2000 to 2999 frmSaveFile, 3000 to 3999 frmSaveToCD. A control array has one such base, and its
// element i has base + i. Read by the resource compiler too: #define lines only.

#define IDI_TRIMBROOK 100
#define IDI_OPEN 101
#define IDI_SAVE 102
#define IDI_TICK_ALL 103
#define IDI_CLEAR_ALL 104

#define IDC_frmTrimbrook_Frame1 1001
#define IDC_frmTrimbrook_Label1 1002
#define IDC_frmTrimbrook_Text1 1003
#define IDC_frmTrimbrook_Command1 1004
#define IDC_frmTrimbrook_Label2 1005
#define IDC_frmTrimbrook_Text2 1006
#define IDC_frmTrimbrook_Label3 1007
#define IDC_frmTrimbrook_Text3 1008
#define IDC_frmTrimbrook_Label4 1009
#define IDC_frmTrimbrook_Frame3 1010
#define IDC_frmTrimbrook_Label12 1011
#define IDC_frmTrimbrook_Slider1 1012
#define IDC_frmTrimbrook_Label11 1013
#define IDC_frmTrimbrook_Slider2 1014
#define IDC_frmTrimbrook_CheckCTRS 1015
#define IDC_frmTrimbrook_Frame4 1016
#define IDC_frmTrimbrook_Frame6 1017
#define IDC_frmTrimbrook_Calendar1 1018
#define IDC_frmTrimbrook_Label13 1019
#define IDC_frmTrimbrook_Text8 1020
#define IDC_frmTrimbrook_UpDownH 1021
#define IDC_frmTrimbrook_Label14 1022
#define IDC_frmTrimbrook_Text9 1023
#define IDC_frmTrimbrook_UpDownM 1024
#define IDC_frmTrimbrook_Label15 1025
#define IDC_frmTrimbrook_Text10 1026
#define IDC_frmTrimbrook_UpDownS 1027
#define IDC_frmTrimbrook_Frame5 1028
#define IDC_frmTrimbrook_Calendar2 1029
#define IDC_frmTrimbrook_Label16 1030
#define IDC_frmTrimbrook_Text11 1031
#define IDC_frmTrimbrook_UpDown1 1032
#define IDC_frmTrimbrook_Label17 1033
#define IDC_frmTrimbrook_Text12 1034
#define IDC_frmTrimbrook_UpDown2 1035
#define IDC_frmTrimbrook_Label18 1036
#define IDC_frmTrimbrook_Text13 1037
#define IDC_frmTrimbrook_UpDown3 1038
#define IDC_frmTrimbrook_Command5 1039
#define IDC_frmTrimbrook_Command6 1040
#define IDC_frmTrimbrook_Frame7 1041
#define IDC_frmTrimbrook_cmdSet 1042
#define IDC_frmTrimbrook_cmdClear 1043
#define IDC_frmTrimbrook_Command8 1044
#define IDC_frmTrimbrook_Frame2 1045
#define IDC_frmTrimbrook_Label8 1046
#define IDC_frmTrimbrook_Text6 1047
#define IDC_frmTrimbrook_Command2 1048
#define IDC_frmTrimbrook_Label7 1049
#define IDC_frmTrimbrook_Text5 1050
#define IDC_frmTrimbrook_Label6 1051
#define IDC_frmTrimbrook_Text4 1052
#define IDC_frmTrimbrook_Label10 1053
#define IDC_frmTrimbrook_Text7 1054
#define IDC_frmTrimbrook_Label9 1055
#define IDC_frmTrimbrook_Command3 1056
#define IDC_frmTrimbrook_Command7 1057
#define IDC_frmTrimbrook_Command4 1058
#define IDC_frmTrimbrook_Check1 1100
#define IDC_frmTrimbrook_Label5 1200

#define IDC_frmSaveFile_Frame1 2001
#define IDC_frmSaveFile_Animation1 2002
#define IDC_frmSaveFile_Label2 2003
#define IDC_frmSaveFile_ProgressBar1 2004
#define IDC_frmSaveFile_Label3 2005
#define IDC_frmSaveFile_cmdOpen 2006
#define IDC_frmSaveFile_cmdOpenFolder 2007
#define IDC_frmSaveFile_cmdCancel 2008
#define IDC_frmSaveFile_Timer1 2009

#define IDC_frmSaveToCD_Label2 3001
#define IDC_frmSaveToCD_Label1 3002
#define IDC_frmSaveToCD_Combo1 3003
#define IDC_frmSaveToCD_Text1 3004
#define IDC_frmSaveToCD_Check1 3005
#define IDC_frmSaveToCD_Option1 3006
#define IDC_frmSaveToCD_Option2 3007
#define IDC_frmSaveToCD_Animation1 3008
#define IDC_frmSaveToCD_ProgressBar1 3009
#define IDC_frmSaveToCD_Label3 3010
#define IDC_frmSaveToCD_Frame1 3011
#define IDC_frmSaveToCD_cmdCancel 3012
#define IDC_frmSaveToCD_Timer1 3013
#define IDC_frmSaveToCD_Timer2 3014
#define IDC_frmSaveToCD_Command1 3015
#define IDC_frmSaveToCD_Command2 3016
#define IDC_frmSaveToCD_cmdNext 3100
