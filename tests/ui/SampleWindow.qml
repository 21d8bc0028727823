import Vant.Ui

RootView { }
